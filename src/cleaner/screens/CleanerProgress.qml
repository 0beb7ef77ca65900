import QtQuick
import Brivane.Components
import Brivane.Cleaner

// How far a removal has come, on the ground of the bar below it.
Rectangle {
    id: root

    required property CleanerViewModel viewModel

    implicitHeight: panel.implicitHeight + 2 * Metrics.spacingMedium
    color: ColorPalette.surface

    Rectangle {
        width: parent.width
        height: 1
        color: ColorPalette.hairline
    }
    ProgressPanel {
        id: panel

        function announce(): void {
            if (visible)
                ScreenReader.alert(panel);
        }

        onVisibleChanged: Qt.callLater(announce) // qmllint disable
        onIsStoppingChanged: Qt.callLater(announce) // qmllint disable

        objectName: "cleanerProgress"
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.margins: Metrics.spacingHuge
        anchors.verticalCenter: parent.verticalCenter
        text: root.viewModel.progressText
        detail: root.viewModel.progressDetail
        fraction: root.viewModel.progressFraction
        canStop: true
        isStopping: root.viewModel.isStopping
        onStopped: root.viewModel.stopCleaning()
    }
}
