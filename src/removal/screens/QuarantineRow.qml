import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Brivane.Components
import Brivane.Removal

// One item in quarantine. A click ticks it; under the pointer it shows what can be done with it alone.
T.ItemDelegate {
    id: root

    required property int index
    required property quarantineItem item
    required property string itemId
    required property string name
    required property string category
    required property string path
    required property string sizeText
    required property string daysText
    required property color daysColor
    required property bool isSelected
    required property QuarantineViewModel viewModel
    property bool hasMenu: false
    // What a click means: what was here when the button went down.
    property quarantineItem pressedItem

    readonly property bool isCurrent: ListView.isCurrentItem && ListView.view.activeFocus
    readonly property bool isHovered: viewModel.hoveredItem === itemId

    signal menuRequested(entry: quarantineItem, x: real, y: real)

    objectName: "quarantineRow"
    implicitHeight: 52
    leftPadding: Metrics.spacingMedium
    rightPadding: Metrics.spacingSmall
    hoverEnabled: true
    text: name
    Accessible.role: Accessible.ListItem
    Accessible.name: qsTr("%1, %2, %3").arg(name).arg(category).arg(sizeText)
    Accessible.description: qsTr("from %1, %2 left").arg(path).arg(daysText)
    Accessible.checkable: true
    Accessible.checked: isSelected
    Accessible.onPressAction: viewModel.toggle(item)
    Accessible.onToggleAction: viewModel.toggle(item)
    onHoveredChanged: viewModel.setHovered(itemId, hovered)
    // The list may put another item under a pointer that rests.
    onItemIdChanged: {
        if (hovered)
            viewModel.setHovered(itemId, true);
    }
    onItemChanged: {
        if (!down)
            pressedItem = item;
    }
    Component.onCompleted: pressedItem = item
    Component.onDestruction: viewModel.setHovered(itemId, false)
    onClicked: {
        ListView.view.currentIndex = viewModel.rowOf(pressedItem);
        ListView.view.forceActiveFocus();
        viewModel.toggle(pressedItem);
    }

    Item { // an item of its own: on the row itself the buttons would take part
        anchors.fill: parent

        TapHandler {
            acceptedButtons: Qt.RightButton
            onPressedChanged: {
                if (!pressed)
                    return;
                root.ListView.view.currentIndex = root.index;
                root.menuRequested(root.item, point.position.x, point.position.y);
            }
        }
    }

    background: Rectangle {
        radius: Metrics.radiusMedium
        color: {
            if (root.isSelected)
                return ColorPalette.faded(ColorPalette.orange, 0.04);
            return root.isHovered || root.hasMenu ? ColorPalette.faded("white", 0.025) : "transparent";
        }
        border.width: root.isCurrent ? 2 : 0
        border.color: ColorPalette.faded(ColorPalette.accent, 0.8)
    }

    contentItem: RowLayout {
        spacing: Metrics.spacingMedium

        Rectangle {
            Layout.preferredWidth: 18
            Layout.preferredHeight: 18
            radius: 5
            color: root.isSelected ? ColorPalette.orange : "transparent"
            border.width: root.isSelected ? 0 : 1.5
            border.color: root.isHovered ? ColorPalette.secondaryText : ColorPalette.subtleText

            Symbol {
                objectName: "tick"
                anchors.centerIn: parent
                visible: root.isSelected
                name: "checkmark"
                size: 14
                color: ColorPalette.textOn(ColorPalette.orange)
            }
        }
        QuarantineFileIcon {
            fileName: root.item.fileName
        }
        ColumnLayout {
            Layout.fillWidth: true
            spacing: 1

            AppText {
                Layout.fillWidth: true
                elide: Text.ElideMiddle
                text: root.name
                textStyle: AppText.Style.BodyStrong
                Accessible.ignored: true
            }
            RowLayout {
                Layout.fillWidth: true
                spacing: Metrics.spacingSmall

                AppText {
                    text: root.category
                    textStyle: AppText.Style.Callout
                    color: ColorPalette.purple
                    Accessible.ignored: true
                }
                AppText {
                    Layout.fillWidth: true
                    elide: Text.ElideMiddle
                    text: root.path
                    textStyle: AppText.Style.Callout
                    color: ColorPalette.secondaryText
                    Accessible.ignored: true
                }
            }
        }
        AppText {
            Layout.preferredWidth: 76
            horizontalAlignment: Text.AlignRight
            text: root.sizeText
            Accessible.ignored: true
        }
        Rectangle {
            objectName: "daysBadge"
            Layout.preferredWidth: 40
            Layout.preferredHeight: 20
            radius: height / 2
            color: ColorPalette.faded(root.daysColor, 0.14)

            AppText {
                anchors.centerIn: parent
                text: root.daysText
                textStyle: AppText.Style.Caption
                font.weight: Font.DemiBold
                color: ColorPalette.lightened(root.daysColor, 0.2)
                Accessible.ignored: true
            }
        }
        // Keeps its room, so that nothing moves when the pointer comes.
        QuarantineRowControls {
            Layout.preferredWidth: 54
            item: root.item
            isShown: root.isHovered
            viewModel: root.viewModel
        }
    }
}
