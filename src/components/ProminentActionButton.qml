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

    contentItem: Item {
        implicitWidth: row.implicitWidth
        implicitHeight: row.implicitHeight

        Row {
            id: row

            anchors.centerIn: parent
            spacing: Metrics.spacingSmall
            opacity: root.enabled ? 1 : 0.6

            Symbol {
                anchors.verticalCenter: parent.verticalCenter
                visible: root.icon.name.length > 0
                name: root.icon.name
                size: 18
                color: "white"
            }
            AppText {
                anchors.verticalCenter: parent.verticalCenter
                text: root.text
                font.pixelSize: Metrics.textBody + 1
                font.weight: Font.DemiBold
                color: "white"
                Accessible.ignored: true
            }
        }
    }
}
