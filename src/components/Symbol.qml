import QtQuick
import Brivane.Components

// A symbol by its name, drawn from the icon font. Decoration: what it tells is said by the control or
// the text that it belongs to.
Item {
    id: root

    required property string name
    property real size: 16
    property color color: ColorPalette.primaryText
    // Symbols that turn or grow are drawn as outlines, all others on the pixel grid.
    property bool moving: false

    implicitWidth: size
    implicitHeight: size

    Text {
        anchors.centerIn: parent
        width: root.size
        height: root.size
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        text: SymbolTable.glyph(root.name)
        textFormat: Text.PlainText
        color: root.color
        font.family: SymbolTable.fontFamily
        font.pixelSize: Math.max(1, Math.round(root.size))
        renderType: root.moving ? Text.QtRendering : Text.NativeRendering
        Accessible.ignored: true
    }
}
