import QtQuick
import Brivane.Components

// A symbol by its name, drawn from the icon font. Decoration: what it tells is said by the control or
// the text that it belongs to.
Item {
    id: root

    required property string name
    property real size: 16
    property color color: ColorPalette.primaryText

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
        renderType: Text.NativeRendering
        Accessible.ignored: true
    }
}
