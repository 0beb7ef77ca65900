import QtQuick
import Brivane.Components

// A word in a small capsule.
Rectangle {
    id: root

    required property string text
    property color tint: ColorPalette.accent

    implicitWidth: label.implicitWidth + 2 * (Metrics.spacingSmall - 1)
    implicitHeight: 18
    radius: height / 2
    color: ColorPalette.faded(tint, 0.16)

    AppText {
        id: label

        anchors.centerIn: parent
        text: root.text
        textStyle: AppText.Style.Caption
        font.weight: Font.Medium
        color: ColorPalette.lightened(root.tint, 0.3)
    }
}
