import QtQuick
import Brivane.Components

// A word or a figure in a small capsule, perhaps with a symbol.
Rectangle {
    id: root

    required property string text
    property string icon
    property string toolTip
    property color tint: ColorPalette.accent
    property int weight: Font.Medium
    property bool isDecoration: false // what it lies in says the same

    implicitWidth: row.implicitWidth + 2 * (Metrics.spacingSmall - 1)
    implicitHeight: 18
    radius: height / 2
    color: ColorPalette.faded(tint, 0.16)

    Row {
        id: row

        anchors.centerIn: parent
        spacing: 3

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            visible: root.icon.length > 0
            name: root.icon
            size: 12
            color: label.color
        }
        AppText {
            id: label

            anchors.verticalCenter: parent.verticalCenter
            text: root.text
            textStyle: AppText.Style.Caption
            font.weight: root.weight
            Accessible.ignored: root.isDecoration
            color: ColorPalette.lightened(root.tint, 0.3)
        }
    }

    Loader {
        anchors.fill: parent
        active: root.toolTip.length > 0
        sourceComponent: ToolTipArea { text: root.toolTip }
    }
}
