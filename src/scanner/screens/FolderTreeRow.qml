import QtQuick
import QtQuick.Layouts
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

    contentItem: RowLayout {
        spacing: Metrics.spacingSmall

        Symbol {
            Layout.leftMargin: Metrics.spacingMedium
            name: root.isDirectory ? "folder.fill" : "doc.fill"
            size: 18
            color: root.isDirectory ? ColorPalette.accent : ColorPalette.subtleText
        }
        AppText {
            Layout.fillWidth: true
            elide: Text.ElideMiddle
            text: root.name
            Accessible.ignored: true
        }
        Rectangle {
            Layout.preferredWidth: Math.round(Math.min(260, root.width * 0.22))
            Layout.preferredHeight: 4
            Layout.leftMargin: Metrics.spacingSmall
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
            Layout.preferredWidth: 112
            horizontalAlignment: Text.AlignRight
            text: root.sizeText
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
}
