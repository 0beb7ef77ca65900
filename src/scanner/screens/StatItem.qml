import QtQuick
import Brivane.Components

// One figure of a bar: a value and what it counts.
Row {
    id: root

    property string icon
    property string value
    property string caption

    spacing: Metrics.spacingTiny + 2

    Symbol {
        anchors.verticalCenter: parent.verticalCenter
        visible: root.icon.length > 0
        name: root.icon
        size: 15
        color: ColorPalette.subtleText
    }
    AppText {
        anchors.verticalCenter: parent.verticalCenter
        text: root.value
        textStyle: AppText.Style.BodyStrong
    }
    AppText {
        anchors.verticalCenter: parent.verticalCenter
        visible: root.caption.length > 0
        text: root.caption
        color: ColorPalette.secondaryText
    }
}
