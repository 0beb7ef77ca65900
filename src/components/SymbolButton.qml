import QtQuick
import Brivane.Components

// A small round button with a symbol alone; its tool tip is its name.
BaseButton {
    id: root

    property color color: ColorPalette.secondaryText
    property int symbolSize: 16

    leftPadding: 0
    rightPadding: 0
    implicitWidth: 26
    implicitHeight: 26

    background: Rectangle {
        radius: height / 2
        color: ColorPalette.faded("white", [0, 0.1, 0.16][root.liveliness])
    }
    contentItem: Item {
        Symbol {
            anchors.centerIn: parent
            name: root.icon.name
            size: root.symbolSize
            color: root.liveliness > 0 ? ColorPalette.primaryText : root.color
            opacity: root.enabled ? 1 : 0.45
        }
    }
}
