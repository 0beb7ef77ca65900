import QtQuick
import QtQuick.Layouts
import Brivane.Components
import Brivane.Removal

// What can be done with the ticked rows.
Rectangle {
    id: root

    required property QuarantineViewModel viewModel

    implicitHeight: 52
    color: ColorPalette.surface

    Rectangle {
        width: parent.width
        height: 1
        color: ColorPalette.hairline
    }
    RowLayout {
        anchors.fill: parent
        anchors.leftMargin: Metrics.spacingHuge
        anchors.rightMargin: Metrics.spacingHuge
        spacing: Metrics.spacingSmall

        AppText {
            objectName: "selectedCount"
            Layout.fillWidth: true
            text: qsTr("%1 selected").arg(root.viewModel.selectedCount)
            textStyle: AppText.Style.BodyStrong
        }
        CapsuleActionButton {
            objectName: "restoreSelected"
            enabled: !root.viewModel.isReadOnly
            large: true
            icon.name: "arrow.uturn.backward"
            label: qsTr("Restore")
            color: ColorPalette.blue
            onClicked: root.viewModel.restoreSelected()
        }
        CapsuleActionButton {
            objectName: "deleteSelected"
            enabled: !root.viewModel.isReadOnly
            large: true
            icon.name: "trash"
            label: qsTr("Delete")
            color: ColorPalette.danger
            onClicked: root.viewModel.deleteSelected()
        }
    }
}
