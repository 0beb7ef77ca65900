import QtQuick
import Brivane.Components

// What stands in a button: a symbol, or a spinner while it is busy, and its text, centred.
Item {
    id: root

    property string symbol
    property string text
    property bool isBusy: false
    property color color: ColorPalette.primaryText
    property int symbolSize: 14
    property int pixelSize: Metrics.textCallout
    property int weight: Font.Medium

    implicitWidth: row.implicitWidth
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
            anchors.verticalCenter: parent.verticalCenter
            visible: text.length > 0
            text: root.text
            font.pixelSize: root.pixelSize
            font.weight: root.weight
            color: root.color
            Accessible.ignored: true
        }
    }
}
