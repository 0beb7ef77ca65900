import QtQuick
import Brivane.Components

// One choice of a few. One stop of the Tab key; arrows, Home and End move the choice.
//
// The choice belongs to the screen: bind `selection`, and assign it in `onActivated`.
PlainControl {
    id: root

    property string name // what is chosen
    property var options: [] // of { value, label }, perhaps with { icon, objectName }
    property var selection
    property color accent: ColorPalette.accent
    property color chosenTextColor: ColorPalette.textOn(accent)

    readonly property int currentIndex: options.findIndex(option => option.value === selection)

    signal activated(value: var)

    function activate(index: int): void {
        if (index >= 0 && index < options.length && index !== currentIndex)
            activated(options[index].value);
    }

    leftPadding: 2
    rightPadding: 2
    topPadding: 2
    bottomPadding: 2
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    activeFocusOnTab: true
    opacity: enabled ? 1 : 0.5

    Keys.onLeftPressed: activate(currentIndex - 1)
    Keys.onUpPressed: activate(currentIndex - 1)
    Keys.onRightPressed: activate(currentIndex + 1)
    Keys.onDownPressed: activate(currentIndex + 1)
    Keys.onPressed: event => {
        if (event.key === Qt.Key_Home)
            activate(0);
        else if (event.key === Qt.Key_End)
            activate(options.length - 1);
        else
            return;
        event.accepted = true;
    }

    Accessible.role: Accessible.Grouping
    Accessible.name: name
    Accessible.description: currentIndex >= 0 ? options[currentIndex].label : ""
    Accessible.focusable: true
    Accessible.focused: activeFocus

    background: Rectangle {
        radius: height / 2
        color: ColorPalette.faded("white", 0.04)
        border.width: 1
        border.color: ColorPalette.hairline

        FocusRing {
            shown: root.visualFocus
            controlRadius: parent.height / 2
        }
    }

    contentItem: Row {
        spacing: 2

        Repeater {
            model: root.options

            SegmentPill {
                chosen: index === root.currentIndex
                accent: root.accent
                chosenTextColor: root.chosenTextColor
                hasKeyboard: chosen && root.activeFocus
                onClicked: root.activate(index)
            }
        }
    }
}
