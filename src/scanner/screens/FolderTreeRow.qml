import QtQuick
import QtQuick.Layouts
import Brivane.Components
import Brivane.Scanner

// One entry of the focused folder. Under the pointer, here or in the chart, it shows its actions.
KeyboardListRow {
    id: root

    required property fileNode node
    required property string name
    required property string sizeText
    required property double share
    required property bool isDirectory
    required property bool hasChildren
    required property bool isUnreadable
    required property bool isIncomplete
    required property bool isStaged
    required property ScanViewModel viewModel

    function rowOf(node: var): int {
        return viewModel.folder.rowOf(node);
    }

    function activate(entry: fileNode): void {
        if (entry.isDirectory)
            viewModel.drillDown(entry);
        else
            viewModel.selectedNode = entry;
    }

    objectName: "folderTreeRow"
    entry: node
    title: name
    titleColor: isStaged ? ColorPalette.secondaryText : ColorPalette.primaryText
    trailingText: sizeText
    trailingColor: isUnreadable ? ColorPalette.warning : ColorPalette.primaryText
    trailingWidth: 84
    isSelected: viewModel.selectedNode === node
    isLit: viewModel.hoveredNode === node
    Accessible.description: {
        if (isStaged)
            return isDirectory ? qsTr("folder, staged for deletion") : qsTr("staged for deletion");
        return isDirectory ? qsTr("folder") : "";
    }
    onHoveredChanged: viewModel.setHovered(node, hovered)
    // The list may put another entry under a pointer that rests.
    onNodeChanged: {
        if (hovered)
            viewModel.setHovered(node, true);
    }
    onActivated: node => activate(node)

    leading: Symbol {
        name: root.isUnreadable ? "lock.fill" : root.isDirectory ? "folder.fill" : "doc.fill"
        size: 18
        color: root.isUnreadable ? ColorPalette.warning
            : root.isDirectory ? ColorPalette.accent : ColorPalette.subtleText
    }
    badges: Symbol {
        objectName: "stagedMark"
        visible: root.isStaged
        name: "trash.fill"
        size: 15
        color: ColorPalette.danger
    }
    trailing: Symbol {
        opacity: root.isDirectory && root.hasChildren ? 1 : 0
        name: "chevron.right"
        size: 16
        color: ColorPalette.subtleText
    }

    Item { // the share of the folder, or what can be done
        Layout.preferredWidth: 72
        Layout.preferredHeight: 28

        Rectangle {
            anchors.verticalCenter: parent.verticalCenter
            visible: !controls.active
            width: parent.width
            height: 4
            radius: 2
            color: ColorPalette.faded("white", 0.05)

            Rectangle {
                width: root.share > 0 ? Math.max(parent.height, parent.width * root.share) : 0
                height: parent.height
                radius: parent.radius
                color: root.isDirectory ? ColorPalette.accent : ColorPalette.subtleText
            }
        }
        Loader {
            id: controls

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            active: root.isLit

            sourceComponent: Row {
                spacing: 2

                RowButton {
                    objectName: "revealRow"
                    entry: root.node
                    icon.name: "folder"
                    toolTip: qsTr("Reveal in Files")
                    onChosen: node => root.viewModel.actions.reveal(node)
                }
                RowButton {
                    objectName: "stageRow"
                    entry: root.node
                    icon.name: "trash"
                    color: root.isStaged ? ColorPalette.danger : ColorPalette.secondaryText
                    toolTip: root.isStaged ? qsTr("Staged for deletion") : qsTr("Stage for deletion")
                    onChosen: node => root.viewModel.actions.stage(node)
                }
            }
        }
    }
}
