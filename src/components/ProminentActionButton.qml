import QtQuick
import Brivane.Components

// The one main action of a screen.
BaseButton {
    id: root

    property string label
    property list<color> colors

    readonly property var shownColors: colors.length > 0 ? colors : [ColorPalette.indigo]

    text: label
    cornerRadius: Metrics.radiusMedium + 2
    implicitHeight: Metrics.controlHeightProminent
    leftPadding: Metrics.spacingHuge
    rightPadding: Metrics.spacingHuge

    background: Item {
        opacity: root.enabled ? 1 : 0.4

        SoftShadow {
            visible: root.enabled
            color: root.shownColors[0]
            strength: 0.35
            radius: root.cornerRadius
        }
        GradientPanel {
            anchors.fill: parent
            colors: root.shownColors
            radius: root.cornerRadius
        }
        Rectangle {
            anchors.fill: parent
            radius: root.cornerRadius
            color: root.down ? ColorPalette.faded("black", 0.14)
                             : ColorPalette.faded("white", root.liveliness === 1 ? 0.1 : 0)
            border.width: 1
            border.color: ColorPalette.faded("white", 0.14)
            Behavior on color { ColorAnimation { duration: Motion.quick } }
        }
    }

    contentItem: ButtonLabel {
        symbol: root.icon.name
        text: root.text
        color: "white"
        symbolSize: 18
        pixelSize: Metrics.textBody + 1
        weight: Font.DemiBold
        opacity: root.enabled ? 1 : 0.6
    }
}
