import QtQuick
import Brivane.Components

// One of the charts to choose from.
BaseButton {
    id: root

    property string label
    property bool isActive: false

    text: label
    implicitHeight: Metrics.controlHeight - 4
    leftPadding: Metrics.spacingMedium - 2
    rightPadding: Metrics.spacingMedium
    Accessible.role: Accessible.RadioButton
    Accessible.checkable: true
    Accessible.checked: isActive

    background: Rectangle {
        radius: height / 2
        color: ColorPalette.faded("white", [0, 0.07, 0.12][root.liveliness])

        Rectangle {
            anchors.fill: parent
            radius: height / 2
            color: ColorPalette.faded(ColorPalette.accent, 0.24)
            opacity: root.isActive ? 1 : 0
            scale: root.isActive ? 1 : 0.8

            Behavior on opacity { Spring { response: 0.3; damping: 0.8 } }
            Behavior on scale { Spring { response: 0.3; damping: 0.8 } }
        }
    }

    contentItem: ButtonLabel {
        symbol: root.icon.name
        text: root.text
        symbolSize: 15
        pixelSize: Metrics.textCallout
        color: root.isActive ? ColorPalette.lightened(ColorPalette.accent, 0.4) : ColorPalette.secondaryText
    }
}
