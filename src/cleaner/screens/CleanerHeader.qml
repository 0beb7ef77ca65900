import QtQuick
import QtQuick.Layouts
import Brivane.Components
import Brivane.Cleaner

// What a scan does or has found, and what stops or repeats it.
RowLayout {
    id: root

    required property CleanerViewModel viewModel

    function takeFocus(): void {
        (stop.visible ? stop : rescan).forceActiveFocus(Qt.TabFocusReason);
    }

    spacing: Metrics.spacingMedium

    IconTile {
        id: tile

        icon: "sparkles"
        tint: ColorPalette.cyan
        size: 40

        SequentialAnimation on scale {
            id: scanPulse

            running: root.viewModel.isScanning && root.visible && Motion.enabled
            loops: Animation.Infinite
            onRunningChanged: if (!running) tile.scale = 1
            NumberAnimation { to: 1.1; duration: 700; easing.type: Easing.InOutQuad }
            NumberAnimation { to: 1; duration: 700; easing.type: Easing.InOutQuad }
        }
    }
    AppText {
        id: words

        // That a scan begins or has ended is to be seen here alone.
        readonly property bool isScanning: root.viewModel.isScanning

        function announce(): void {
            if (visible)
                ScreenReader.alert(words);
        }

        objectName: "cleanerHeaderText"
        onIsScanningChanged: Qt.callLater(announce) // qmllint disable
        Layout.fillWidth: true
        text: root.viewModel.headerText
        textStyle: AppText.Style.Title
        elide: Text.ElideRight
    }
    CapsuleActionButton {
        id: stop

        objectName: "stopCleanerScan"
        visible: root.viewModel.isScanning
        large: true
        label: qsTr("Stop")
        icon.name: "stop.fill"
        color: ColorPalette.danger
        onClicked: root.viewModel.stopScan()
    }
    CapsuleActionButton {
        id: rescan

        objectName: "cleanerRescan"
        visible: !root.viewModel.isScanning
        enabled: !root.viewModel.isCleaning
        large: true
        label: qsTr("Scan Again")
        icon.name: "arrow.clockwise"
        onClicked: root.viewModel.scanAll()
    }
}
