import QtQuick
import QtQuick.Layouts
import Brivane.Components
import Brivane.Removal

// What the store holds, and what can be done with all of it.
RowLayout {
    id: root

    required property QuarantineViewModel viewModel

    spacing: Metrics.spacingSmall

    StatPill {
        objectName: "itemsPill"
        value: root.viewModel.itemCount
        label: qsTr("Items")
    }
    StatPill {
        objectName: "totalPill"
        value: root.viewModel.totalSizeText
        label: qsTr("Total")
    }
    StatPill {
        objectName: "autoPurgePill"
        value: qsTr("7 days")
        label: qsTr("Auto-purge")
    }
    Item {
        Layout.fillWidth: true
    }
    CapsuleActionButton {
        objectName: "restoreAll"
        enabled: !root.viewModel.isReadOnly
        large: true
        icon.name: "arrow.uturn.backward"
        label: qsTr("Restore All")
        color: ColorPalette.blue
        onClicked: root.viewModel.showRestoreAllConfirm = true
    }
    CapsuleActionButton {
        objectName: "purgeAll"
        enabled: !root.viewModel.isReadOnly
        large: true
        icon.name: "trash"
        label: qsTr("Purge All")
        color: ColorPalette.danger
        onClicked: root.viewModel.showPurgeConfirm = true
    }
}
