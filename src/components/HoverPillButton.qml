import QtQuick
import Brivane.Components

// A quiet text pill whose fill lightens under the pointer. `checked` shows that it is switched on.
BaseButton {
    id: root

    property string label
    property color color: ColorPalette.primaryText

    text: label
    leftPadding: icon.name.length > 0 ? Metrics.spacingMedium - 2 : Metrics.spacingMedium
    Accessible.checkable: checkable
    Accessible.checked: checked

    background: Rectangle {
        radius: height / 2
        color: ColorPalette.faded("white", (root.checked ? 0.08 : 0.05) + [0, 0.05, 0.09][root.liveliness])
        border.width: 1
        border.color: root.checked ? ColorPalette.hairlineStrong : ColorPalette.hairline
        opacity: root.enabled ? 1 : 0.5
        Behavior on color { ColorAnimation { duration: Motion.quick } }
    }

    contentItem: Item {
        implicitWidth: row.implicitWidth
        implicitHeight: row.implicitHeight

        Row {
            id: row

            anchors.centerIn: parent
            spacing: Metrics.spacingTiny + 2
            opacity: root.enabled ? 1 : 0.45

            Symbol {
                anchors.verticalCenter: parent.verticalCenter
                visible: root.icon.name.length > 0
                name: root.icon.name
                size: 14
                color: root.color
            }
            AppText {
                anchors.verticalCenter: parent.verticalCenter
                visible: text.length > 0
                text: root.text
                textStyle: AppText.Style.Callout
                font.weight: Font.Medium
                color: root.color
                Accessible.ignored: true
            }
        }
    }
}
