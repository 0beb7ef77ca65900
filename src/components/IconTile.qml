import QtQuick
import Brivane.Components

// A symbol on a rounded square of its own colour.
Rectangle {
    id: root

    property string icon
    property color tint: ColorPalette.accent
    property real size: 36
    property real symbolSize: 0.42 * size
    property bool dimmed: false

    implicitWidth: size
    implicitHeight: size
    radius: 0.24 * size
    color: ColorPalette.faded(tint, dimmed ? 0.05 : 0.12)

    Symbol {
        anchors.centerIn: parent
        name: root.icon
        size: root.symbolSize
        color: root.tint
        opacity: root.dimmed ? 0.35 : 1
    }
}
