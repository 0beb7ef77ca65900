import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Brivane.Components
import Brivane.Scanner

// One entry of the focused folder. Under the pointer, and where the keyboard is, it shows its actions.
T.ItemDelegate {
    id: root

    required property int index
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
    property bool hasMenu: false
    // What a click means: what was here when the button went down. A report may put another entry here
    // before it comes up.
    property fileNode pressedNode

    readonly property bool isCurrent: ListView.isCurrentItem && ListView.view.activeFocus
    readonly property bool isSelected: root.viewModel.selectedNode === root.node
    readonly property bool isLit: root.viewModel.hoveredNode === root.node

    signal menuRequested(entry: fileNode, x: real, y: real)

    function activate(entry: fileNode): void {
        if (entry.isDirectory)
            viewModel.drillDown(entry);
        else
            viewModel.selectedNode = entry;
    }

    objectName: "folderTreeRow"
    implicitHeight: 36
    hoverEnabled: true
    text: name
    Accessible.role: Accessible.ListItem
    Accessible.name: qsTr("%1, %2").arg(name).arg(sizeText)
    Accessible.description: isStaged ? qsTr("staged for deletion") : ""
    Accessible.onPressAction: activate(node)
    onHoveredChanged: viewModel.setHovered(node, hovered)
    // The list may put another entry under a pointer that rests.
    onNodeChanged: {
        if (hovered)
            viewModel.setHovered(node, true);
        if (!down)
            pressedNode = node;
    }
    Component.onCompleted: pressedNode = node
    onClicked: {
        ListView.view.currentIndex = viewModel.folder.rowOf(pressedNode);
        ListView.view.forceActiveFocus();
        activate(pressedNode);
    }

    Item { // an item of its own: on the row itself the button would take part
        anchors.fill: parent

        TapHandler {
            acceptedButtons: Qt.RightButton
            onPressedChanged: {
                if (!pressed)
                    return;
                root.ListView.view.currentIndex = root.index;
                root.menuRequested(root.node, point.position.x, point.position.y);
            }
        }
    }

    background: Rectangle {
        radius: Metrics.radiusSmall
        color: {
            if (root.isSelected)
                return ColorPalette.faded(ColorPalette.accent, 0.22);
            if (root.isLit || root.hasMenu)
                return ColorPalette.faded("white", 0.06);
            return root.isCurrent ? ColorPalette.faded("white", 0.04) : "transparent";
        }
        border.width: root.isCurrent ? 2 : 0
        border.color: ColorPalette.faded(ColorPalette.accent, 0.8)
    }

    contentItem: RowLayout {
        spacing: Metrics.spacingSmall

        Symbol {
            Layout.leftMargin: Metrics.spacingMedium
            name: root.isUnreadable ? "lock.fill" : root.isDirectory ? "folder.fill" : "doc.fill"
            size: 18
            color: root.isUnreadable ? ColorPalette.warning
                : root.isDirectory ? ColorPalette.accent : ColorPalette.subtleText
        }
        AppText {
            Layout.fillWidth: true
            elide: Text.ElideMiddle
            text: root.name
            color: root.isStaged ? ColorPalette.secondaryText : ColorPalette.primaryText
            Accessible.ignored: true
        }
        Symbol {
            objectName: "stagedMark"
            visible: root.isStaged
            name: "trash.fill"
            size: 15
            color: ColorPalette.danger
        }
        Item {
            Layout.preferredWidth: 72
            Layout.fillHeight: true

            Rectangle {
                anchors.verticalCenter: parent.verticalCenter
                visible: !actions.active
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
        }
        AppText {
            Layout.preferredWidth: 84
            horizontalAlignment: Text.AlignRight
            text: root.sizeText
            color: root.isUnreadable ? ColorPalette.warning : ColorPalette.primaryText
            Accessible.ignored: true
        }
        Symbol {
            Layout.rightMargin: Metrics.spacingSmall
            opacity: root.isDirectory && root.hasChildren ? 1 : 0
            name: "chevron.right"
            size: 16
            color: ColorPalette.subtleText
        }
    }

    Loader {
        id: actions

        anchors.right: parent.right
        anchors.rightMargin: 84 + 16 + 3 * Metrics.spacingSmall
        anchors.verticalCenter: parent.verticalCenter
        active: root.isLit

        sourceComponent: RowControls {
            node: root.node
            isStaged: root.isStaged
            actions: root.viewModel.actions
        }
    }
}
