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
    // The first text is there at once.
    property bool isRolling: false
    property bool isComplete: false

    function widthOf(character: string): real {
        return metrics.advanceWidth(character >= "0" && character <= "9" ? "0" : character);
    }

    // Places come, and stay without a character when the text gets shorter.
    function showText(): void {
        while (places.count < text.length)
            places.append({});
        isRolling = isComplete && text.length > 0;
    }

    onTextChanged: showText()
    Component.onCompleted: {
        isComplete = true;
        showText();
    }

    implicitWidth: row.implicitWidth
    implicitHeight: Math.ceil(metrics.height)
    Accessible.role: Accessible.StaticText
    Accessible.focusable: false
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
            model: ListModel { id: places } // which keeps the cells that are there when others come

            Item {
                id: cell

                required property int index
                readonly property string character: root.text.charAt(root.text.length - 1 - index)
                property string shown
                property string leaving
                property real progress: 1

                // Room for a place that comes or goes is made while it does.
                implicitWidth: root.widthOf(leaving) + (root.widthOf(shown) - root.widthOf(leaving)) * progress
                implicitHeight: root.implicitHeight

                onCharacterChanged: {
                    if (character === shown)
                        return;
                    leaving = shown;
                    shown = character;
                    if (root.isRolling)
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
