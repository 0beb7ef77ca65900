import QtQuick
import Brivane.Components

// What stands in a button: a symbol, or a spinner while it is busy, and its text, centred. The text is cut
// where there is no room for it.
Item {
    id: root

    property string symbol
    property string text
    property bool isBusy: false
    property color color: ColorPalette.primaryText
    property int symbolSize: 14
    property int pixelSize: Metrics.textCallout
    property int weight: Font.Medium
    property int elide: Text.ElideRight

    readonly property real symbolRoom: isBusy || symbol.length > 0 ? symbolSize + row.spacing : 0

    implicitWidth: text.length > 0 ? symbolRoom + label.implicitWidth : symbolSize
    implicitHeight: row.implicitHeight

    Row {
        id: row

        anchors.centerIn: parent
        spacing: root.symbolSize > 16 ? Metrics.spacingSmall : Metrics.spacingTiny + 2

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            visible: !root.isBusy && root.symbol.length > 0
            name: root.symbol
            size: root.symbolSize
            color: root.color
        }
        BusySpinner {
            anchors.verticalCenter: parent.verticalCenter
            visible: root.isBusy
            size: root.symbolSize
            color: root.color
        }
        AppText {
            id: label

            anchors.verticalCenter: parent.verticalCenter
            visible: text.length > 0
            width: Math.min(Math.ceil(implicitWidth), Math.max(0, root.width - root.symbolRoom))
            elide: root.elide
            text: root.text
            font.pixelSize: root.pixelSize
            font.weight: root.weight
            color: root.color
            Accessible.ignored: true
        }
    }
}
