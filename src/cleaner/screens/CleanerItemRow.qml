import QtQuick
import QtQuick.Layouts
import Brivane.Components
import Brivane.Cleaner

// One item: what it is called, where it lies, how large it is beside the largest. A click ticks it.
KeyboardListRow {
    id: root

    required property cleanerItem item
    required property string name
    required property string folder
    required property string iconName
    required property string sizeText
    required property double fraction
    required property CleanerViewModel viewModel
    required isSelected

    readonly property color categoryColor: viewModel.detail.tint

    function rowOf(item: var): int {
        return viewModel.detail.rowOf(item);
    }

    objectName: "cleanerItemRow"
    entry: item
    title: name
    hasStrongTitle: true
    subtitle: folder
    trailingText: sizeText
    trailingWidth: 68
    rightPadding: Metrics.spacingMedium // in line with the header
    hasCheckBox: true
    checkState: isSelected ? Qt.Checked : Qt.Unchecked
    tint: categoryColor
    selectedFill: ColorPalette.faded(categoryColor, 0.05)
    Accessible.description: qsTr("in %1").arg(folder)
    onActivated: item => viewModel.detail.toggle(item)

    leading: IconTile {
        size: 32
        symbolSize: 17
        icon: root.iconName
        tint: root.categoryColor
    }

    Rectangle {
        objectName: "sizeBar"
        Layout.preferredWidth: Math.round(Math.max(56, root.width * 0.18))
        implicitHeight: 4
        radius: 2
        color: ColorPalette.faded("white", 0.06)

        Rectangle {
            objectName: "sizeBarFill"
            width: Math.max(2, parent.width * root.fraction)
            height: parent.height
            radius: parent.radius
            color: root.categoryColor
        }
    }
}
