import QtQuick
import Brivane.Components

// A value over its caption; a value that changes rolls into place.
Column {
    id: root

    property string value
    property string caption
    property color tint: ColorPalette.primaryText

    spacing: 0
    Accessible.role: Accessible.StaticText
    Accessible.focusable: false
    Accessible.name: value + " " + caption

    NumericText {
        text: root.value
        color: root.tint
        pixelSize: Metrics.textTitle - 2
        Accessible.ignored: true
    }
    AppText {
        text: root.caption
        textStyle: AppText.Style.Caption
        Accessible.ignored: true
    }
}
