import QtQuick
import Brivane.Components

// The outline of the control that the keyboard acts on. Controls show it for `visualFocus`, that is,
// when the focus came by keyboard.
Rectangle {
    id: root

    property bool shown: false
    property real controlRadius: Metrics.radiusSmall
    property int gap: 2

    objectName: "focusRing"
    anchors.fill: parent
    anchors.margins: -(gap + border.width)
    visible: shown
    color: "transparent"
    radius: controlRadius + gap + border.width
    border.width: 2
    border.color: ColorPalette.lightened(ColorPalette.accent, 0.25)
    z: 1
}
