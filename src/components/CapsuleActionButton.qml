import QtQuick
import Brivane.Components

// A small capsule that acts on one thing: a symbol and a label, or a spinner while it is busy.
BaseButton {
    id: root

    property string label
    property string busyLabel: label
    property color color: ColorPalette.accent
    property bool isBusy: false
    property bool large: false

    readonly property color foreground: ColorPalette.lightened(color, 0.3)
    readonly property real fillOpacity: isBusy ? 0.08 : [0.15, 0.24, 0.32][liveliness]

    text: isBusy ? busyLabel : label
    enabled: !isBusy
    implicitHeight: large ? Metrics.controlHeightLarge : Metrics.controlHeight
    leftPadding: large ? Metrics.spacingMedium + 2 : Metrics.spacingMedium - 2
    rightPadding: leftPadding + 2

    background: Rectangle {
        radius: height / 2
        color: ColorPalette.faded(root.color, root.fillOpacity)
        opacity: root.enabled || root.isBusy ? 1 : 0.5
        Behavior on color { ColorAnimation { duration: Motion.quick } }
    }

    contentItem: ButtonLabel {
        symbol: root.icon.name
        text: root.text
        isBusy: root.isBusy
        color: root.foreground
        symbolSize: root.large ? 16 : 14
        pixelSize: root.large ? Metrics.textBody : Metrics.textCallout
        opacity: root.enabled ? 1 : root.isBusy ? 0.8 : 0.45
    }
}
