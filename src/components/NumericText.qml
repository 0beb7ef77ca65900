import QtQuick
import Brivane.Components

// A number-like text whose characters roll upwards into place when they change. Digits are equally wide,
// so that the text does not jitter while it counts.
Item {
    id: root

    property string text
    property color color: ColorPalette.primaryText
    property int pixelSize: Metrics.textTitle
    property int weight: Font.DemiBold

    property alias textFont: metrics.font

    implicitWidth: row.implicitWidth
    implicitHeight: Math.ceil(metrics.height)
    Accessible.role: Accessible.StaticText
    Accessible.name: text

    FontMetrics {
        id: metrics
        font.pixelSize: root.pixelSize
        font.weight: root.weight
    }

    Row {
        id: row

        layoutDirection: Qt.RightToLeft // places keep their identity: units stay units

        Repeater {
            model: root.text.length

            Item {
                id: cell

                required property int index
                readonly property string character: root.text.charAt(root.text.length - 1 - index)
                readonly property bool isDigit: character >= "0" && character <= "9"
                property string shown
                property string leaving
                property real progress: 1

                implicitWidth: isDigit ? metrics.advanceWidth("0") : metrics.advanceWidth(character)
                implicitHeight: root.implicitHeight

                onCharacterChanged: {
                    if (character.length === 0 || character === shown)
                        return;
                    leaving = shown;
                    shown = character;
                    if (leaving.length > 0)
                        roll.restart();
                }

                NumberAnimation {
                    id: roll
                    target: cell
                    property: "progress"
                    from: 0
                    to: 1
                    duration: Motion.slow
                    easing.type: Easing.OutCubic
                }

                Text {
                    anchors.horizontalCenter: parent.horizontalCenter
                    y: Math.round((1 - cell.progress) * root.implicitHeight * 0.5)
                    opacity: cell.progress
                    text: cell.shown
                    font: root.textFont
                    color: root.color
                    Accessible.ignored: true
                }
                Text {
                    anchors.horizontalCenter: parent.horizontalCenter
                    y: -Math.round(cell.progress * root.implicitHeight * 0.5)
                    opacity: 1 - cell.progress
                    visible: cell.progress < 1
                    text: cell.leaving
                    font: root.textFont
                    color: root.color
                    Accessible.ignored: true
                }
            }
        }
    }
}
