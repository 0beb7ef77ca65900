import QtQuick
import Brivane.Components

// A figure and what it counts, in a line. Bare, it has no ground and its value does not roll: for bars
// whose figures change all the time.
Rectangle {
    id: root

    property string icon
    property string value
    property string label
    property bool isBare: false

    implicitWidth: row.implicitWidth + (isBare ? 0 : 2 * Metrics.spacingMedium)
    implicitHeight: isBare ? row.implicitHeight : Metrics.controlHeightLarge
    radius: height / 2
    color: isBare ? "transparent" : ColorPalette.faded("white", 0.04)
    border.width: isBare ? 0 : 1
    border.color: ColorPalette.hairline
    Accessible.role: Accessible.StaticText
    Accessible.focusable: false
    Accessible.name: label.length > 0 ? label + ": " + value : value

    Row {
        id: row

        anchors.centerIn: parent
        spacing: Metrics.spacingTiny + 2

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            visible: root.icon.length > 0
            name: root.icon
            size: 15
            color: ColorPalette.subtleText
        }
        Loader {
            anchors.verticalCenter: parent.verticalCenter
            sourceComponent: root.isBare ? still : rolling
        }
        AppText {
            anchors.verticalCenter: parent.verticalCenter
            visible: root.label.length > 0
            text: root.label
            textStyle: root.isBare ? AppText.Style.Body : AppText.Style.Callout
            color: ColorPalette.secondaryText
            Accessible.ignored: true
        }
    }

    Component {
        id: still

        AppText {
            text: root.value
            textStyle: AppText.Style.BodyStrong
            Accessible.ignored: true
        }
    }
    Component {
        id: rolling

        NumericText {
            text: root.value
            pixelSize: Metrics.textBody
            Accessible.ignored: true
        }
    }
}
