import QtQuick
import Brivane.Components
import Brivane.Removal

// What can be done with the ticked rows.
BottomBar {
    id: root

    required property QuarantineViewModel viewModel

    AppText {
        objectName: "selectedCount"
        text: qsTr("%1 selected").arg(root.viewModel.selectedCount)
        textStyle: AppText.Style.BodyStrong
    }

    controls: [
        CapsuleActionButton {
            objectName: "restoreSelected"
            enabled: !root.viewModel.isReadOnly
            large: true
            icon.name: "arrow.uturn.backward"
            label: qsTr("Restore")
            color: ColorPalette.blue
            onClicked: root.viewModel.restoreSelected()
        },
        CapsuleActionButton {
            objectName: "deleteSelected"
            enabled: !root.viewModel.isReadOnly
            large: true
            icon.name: "trash"
            label: qsTr("Delete")
            color: ColorPalette.danger
            onClicked: root.viewModel.deleteSelected()
        }
    ]
}
