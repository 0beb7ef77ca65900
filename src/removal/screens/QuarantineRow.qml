import QtQuick
import QtQuick.Layouts
import Brivane.Components
import Brivane.Removal

// One item in quarantine. A click ticks it; under the pointer it shows what can be done with it alone.
KeyboardListRow {
    id: root

    required property quarantineItem item
    required property string itemId
    required property string name
    required property string category
    required property string path
    required property string sizeText
    required property string daysText
    required property color daysColor
    required property QuarantineViewModel viewModel
    required isSelected

    function rowOf(item: var): int {
        return viewModel.rowOf(item);
    }

    objectName: "quarantineRow"
    entry: item
    title: name
    hasStrongTitle: true
    kind: category
    subtitle: path
    trailingText: sizeText
    hasCheckBox: true
    checkState: isSelected ? Qt.Checked : Qt.Unchecked
    tint: ColorPalette.orange
    selectedFill: ColorPalette.faded(tint, 0.04)
    isLit: viewModel.hoveredItem === itemId
    Accessible.description: qsTr("from %1, %2 left").arg(path).arg(daysText)
    onHoveredChanged: viewModel.setHovered(itemId, hovered)
    // The list may put another item under a pointer that rests.
    onItemIdChanged: {
        if (hovered)
            viewModel.setHovered(itemId, true);
    }
    Component.onDestruction: viewModel.setHovered(itemId, false)
    onActivated: item => viewModel.toggle(item)

    leading: IconTile {
        size: 32
        symbolSize: 18
        icon: QuarantineFileIcons.symbol(root.item.fileName)
        tint: QuarantineFileIcons.color(root.item.fileName)
    }
    trailing: [
        Badge {
            objectName: "daysBadge"
            Layout.preferredWidth: 40
            Layout.preferredHeight: 20
            text: root.daysText
            tint: root.daysColor
            weight: Font.DemiBold
            isDecoration: true
        },
        // Keeps its room, so that nothing moves when the pointer comes.
        Row {
            Layout.preferredWidth: 54
            spacing: 2

            RowButton {
                objectName: "restoreRow"
                entry: root.item
                enabled: !root.viewModel.isReadOnly
                visible: root.isLit
                icon.name: "arrow.uturn.backward"
                toolTip: qsTr("Restore to original location")
                onChosen: item => root.viewModel.restore(item)
            }
            RowButton {
                objectName: "deleteRow"
                entry: root.item
                enabled: !root.viewModel.isReadOnly
                visible: root.isLit
                icon.name: "trash"
                color: ColorPalette.danger
                toolTip: qsTr("Delete permanently")
                onChosen: item => root.viewModel.permanentlyDelete(item)
            }
        }
    ]
}
