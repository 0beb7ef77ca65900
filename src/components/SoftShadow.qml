import QtQuick
import Brivane.Components

// A soft shadow behind a rounded rectangle, without shader effects: layers that add up towards the
// middle, each a little smaller than the one below.
Item {
    id: root

    property color color: "black"
    property real strength: 0.35
    property real blur: 12
    property real radius: 0
    property real dropOffset: 4

    readonly property int layers: 10

    anchors.fill: parent
    anchors.topMargin: dropOffset
    anchors.bottomMargin: -dropOffset

    Repeater {
        model: root.layers

        Rectangle {
            required property int index
            readonly property real growth: root.blur * (1 - 2 * index / root.layers)

            x: -growth
            y: -growth
            width: root.width + 2 * growth
            height: root.height + 2 * growth
            radius: Math.max(0, root.radius + growth)
            // What every layer has to cover so that all of them together reach the strength.
            color: ColorPalette.faded(root.color, 1 - Math.pow(1 - root.strength, 1 / root.layers))
        }
    }
}
