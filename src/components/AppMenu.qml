import QtQuick
import QtQuick.Templates as T
import Brivane.Components

// A menu of AppMenuItems. Arrows move, Enter chooses, Escape closes.
T.Menu {
    id: root

    margins: Metrics.spacingSmall
    padding: Metrics.spacingTiny + 2
    implicitWidth: Math.max(180, implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    overlap: 0
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutside

    enter: Transition {
        NumberAnimation { property: "opacity"; from: 0; to: 1; duration: Motion.quick }
    }
    exit: Transition {
        NumberAnimation { property: "opacity"; from: 1; to: 0; duration: Motion.quick }
    }

    background: Rectangle {
        radius: Metrics.radiusMedium
        color: ColorPalette.surfaceLight
        border.width: 1
        border.color: ColorPalette.hairlineStrong

        SoftShadow {
            z: -1
            radius: parent.radius
        }
    }

    contentItem: ListView {
        implicitWidth: {
            let width = 0;
            for (let index = 0; index < root.count; ++index)
                width = Math.max(width, root.itemAt(index).implicitWidth);
            return width;
        }
        implicitHeight: contentHeight
        model: root.contentModel
        interactive: false
        currentIndex: root.currentIndex
        Accessible.role: Accessible.PopupMenu
    }
}
