import QtQuick
import QtQuick.Templates as T
import Brivane.Components
import Brivane.Scanner

// One entry of the focused folder.
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
    required property ScanViewModel viewModel

    readonly property bool isCurrent: ListView.isCurrentItem && ListView.view.activeFocus
    readonly property bool isSelected: root.viewModel.selectedNode === root.node

    function activate(): void {
        if (isDirectory)
            viewModel.drillDown(node);
        else
            viewModel.selectedNode = node;
    }

    objectName: "folderTreeRow"
    implicitHeight: 36
    hoverEnabled: true
    text: name
    Accessible.role: Accessible.ListItem
    Accessible.name: qsTr("%1, %2").arg(name).arg(sizeText)
    onClicked: {
        ListView.view.currentIndex = index;
        ListView.view.forceActiveFocus();
        activate();
    }

    background: Rectangle {
        radius: Metrics.radiusSmall
        color: {
            if (root.isSelected)
                return ColorPalette.faded(ColorPalette.accent, 0.22);
            if (root.hovered)
                return ColorPalette.faded("white", 0.06);
            return root.isCurrent ? ColorPalette.faded("white", 0.04) : "transparent";
        }
        border.width: root.isCurrent ? 2 : 0
        border.color: ColorPalette.faded(ColorPalette.accent, 0.8)
    }

    contentItem: Item {
        Symbol {
            id: symbol

            anchors.left: parent.left
            anchors.leftMargin: Metrics.spacingMedium
            anchors.verticalCenter: parent.verticalCenter
            name: root.isDirectory ? "folder.fill" : "doc.fill"
            size: 18
            color: root.isDirectory ? ColorPalette.accent : ColorPalette.subtleText
        }
        AppText {
            anchors.left: symbol.right
            anchors.leftMargin: Metrics.spacingSmall
            anchors.right: bar.left
            anchors.rightMargin: Metrics.spacingLarge
            anchors.verticalCenter: parent.verticalCenter
            elide: Text.ElideMiddle
            text: root.name
            Accessible.ignored: true
        }
        Rectangle {
            id: bar

            anchors.right: size.left
            anchors.verticalCenter: parent.verticalCenter
            width: Math.round(Math.min(260, root.width * 0.22))
            height: 4
            radius: 2
            color: ColorPalette.faded("white", 0.05)

            Rectangle {
                width: Math.max(parent.height, parent.width * root.share)
                height: parent.height
                radius: parent.radius
                color: root.isDirectory ? ColorPalette.accent : ColorPalette.subtleText
            }
        }
        AppText {
            id: size

            anchors.right: chevron.left
            anchors.rightMargin: Metrics.spacingSmall
            anchors.verticalCenter: parent.verticalCenter
            width: 120
            horizontalAlignment: Text.AlignRight
            text: root.sizeText
            Accessible.ignored: true
        }
        Symbol {
            id: chevron

            anchors.right: parent.right
            anchors.rightMargin: Metrics.spacingSmall
            anchors.verticalCenter: parent.verticalCenter
            opacity: root.isDirectory && root.hasChildren ? 1 : 0
            name: "chevron.right"
            size: 16
            color: ColorPalette.subtleText
        }
    }
}
