import QtQuick
import Brivane.Components
import Brivane.Cleaner

// How much is selected of how much, and what removes it.
BottomBar {
    id: root

    required property CleanerViewModel viewModel

    StatPill {
        objectName: "selectedPill"
        isBare: true
        value: root.viewModel.selectedSizeText
        label: qsTr("Selected")
    }
    StatPill {
        objectName: "totalPill"
        isBare: true
        value: root.viewModel.totalSizeText
        label: qsTr("Total Junk")
    }

    controls: CapsuleActionButton {
        objectName: "removeSelected"
        enabled: root.viewModel.canRemove
        large: true
        icon.name: "trash.fill"
        label: qsTr("Remove")
        color: ColorPalette.danger
        onClicked: root.viewModel.showCleanConfirmation = true
    }
}
