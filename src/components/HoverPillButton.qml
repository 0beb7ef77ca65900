import QtQuick
import Brivane.Components

// A quiet text pill whose fill lightens under the pointer. `checked` shows that it is switched on.
BaseButton {
    id: root

    property string label
    property color color: ColorPalette.primaryText

    text: label
    leftPadding: icon.name.length > 0 ? Metrics.spacingMedium - 2 : Metrics.spacingMedium

    background: Rectangle {
        radius: height / 2
        color: ColorPalette.faded("white", (root.checked ? 0.08 : 0.05) + [0, 0.05, 0.09][root.liveliness])
        border.width: 1
        border.color: root.checked ? ColorPalette.hairlineStrong : ColorPalette.hairline
        opacity: root.enabled ? 1 : 0.5
        Behavior on color { ColorAnimation { duration: Motion.quick } }
    }

    contentItem: ButtonLabel {
        symbol: root.icon.name
        text: root.text
        color: root.color
        opacity: root.enabled ? 1 : 0.45
    }
}
