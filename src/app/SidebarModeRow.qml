import QtQuick
import Brivane.Components

// A module in the sidebar, below its section's heading where it is the first of one.
Item {
    id: root

    required property int mode
    required property string title
    required property string iconName
    required property color accent
    required property string heading
    required property bool isCurrent
    required property bool isHighlighted
    required property bool isBusy

    property alias row: button

    signal chosen
    signal hoverChanged(isHovered: bool)

    implicitHeight: button.y + button.height + 1

    SidebarHeading {
        id: label

        width: parent.width
        visible: root.heading.length > 0
        text: root.heading
    }

    SidebarRow {
        id: button

        objectName: "mode-" + root.title
        y: label.visible ? label.height : 0
        width: parent.width
        text: root.title
        isCurrent: root.isCurrent
        isTabStop: root.isCurrent
        Accessible.description: root.isBusy ? qsTr("Work in progress") : ""
        onClicked: root.chosen()
        onHoveredChanged: root.hoverChanged(hovered)

        background: Rectangle {
            radius: Metrics.radiusSmall + 1
            // The highlight of the module on screen lies below the rows, and moves.
            color: ColorPalette.faded(root.accent, root.isHighlighted && !root.isCurrent ? 0.1 : 0)
            Behavior on color { ColorAnimation { duration: Motion.quick } }
        }

        Item {
            anchors.fill: parent
            anchors.leftMargin: Metrics.spacingTiny
            anchors.rightMargin: Metrics.spacingSmall

            IconTile {
                id: tile

                anchors.left: parent.left
                anchors.verticalCenter: parent.verticalCenter
                icon: root.iconName
                tint: root.accent
                size: 22
                symbolSize: 14
            }
            AppText {
                anchors.left: tile.right
                anchors.leftMargin: Metrics.spacingSmall
                anchors.right: dot.left
                anchors.verticalCenter: parent.verticalCenter
                text: root.title
                elide: Text.ElideRight
                textStyle: root.isCurrent ? AppText.Style.BodyStrong : AppText.Style.Body
                color: root.isHighlighted ? ColorPalette.primaryText : ColorPalette.lightened(ColorPalette.secondaryText, 0.25)
                Accessible.ignored: true
            }
            PulsingDot {
                id: dot

                objectName: "busyDot"
                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                visible: root.isBusy
                color: root.accent
            }
        }
    }
}
