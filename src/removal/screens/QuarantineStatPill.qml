import QtQuick
import Brivane.Components

// A figure and what it tells.
Rectangle {
    id: root

    property string value
    property string label

    implicitWidth: row.implicitWidth + 2 * Metrics.spacingMedium
    implicitHeight: Metrics.controlHeightLarge
    radius: height / 2
    color: ColorPalette.faded("white", 0.04)
    border.width: 1
    border.color: ColorPalette.hairline
    Accessible.role: Accessible.StaticText
    Accessible.name: root.label + ": " + root.value

    Row {
        id: row

        anchors.centerIn: parent
        spacing: Metrics.spacingTiny + 2

        NumericText {
            anchors.verticalCenter: parent.verticalCenter
            text: root.value
            pixelSize: Metrics.textBody
            Accessible.ignored: true
        }
        AppText {
            anchors.verticalCenter: parent.verticalCenter
            text: root.label
            textStyle: AppText.Style.Callout
            Accessible.ignored: true
        }
    }
}
