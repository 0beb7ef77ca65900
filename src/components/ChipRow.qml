import QtQuick
import Brivane.Components

// One choice of many, in a line that scrolls. One stop of the Tab key; arrows, Home and End move the choice.
// Rows of the model have a `label`.
//
// The choice belongs to the screen: bind `chosenIndex`, and change what it follows in `activated`.
ListView {
    id: root

    property string name // what is chosen
    property int chosenIndex: -1
    property color accent: ColorPalette.accent
    property color ground: ColorPalette.windowBackground // that it lies on

    signal activated(index: int)

    function choose(index: int): void {
        if (index >= 0 && index < count && index !== chosenIndex)
            activated(index);
    }

    // With those beside it, so that it is seen where there are more.
    function showChosen(): void {
        if (chosenIndex < 0 || chosenIndex >= count)
            return;
        forceLayout();
        positionViewAtIndex(Math.min(count - 1, chosenIndex + 1), ListView.Contain);
        positionViewAtIndex(Math.max(0, chosenIndex - 1), ListView.Contain);
    }

    implicitHeight: Metrics.controlHeight - 4
    orientation: ListView.Horizontal
    spacing: Metrics.spacingTiny
    clip: true
    boundsBehavior: Flickable.StopAtBounds
    keyNavigationEnabled: false
    currentIndex: chosenIndex // it has the keyboard
    highlightFollowsCurrentItem: false
    activeFocusOnTab: true
    onChosenIndexChanged: Qt.callLater(showChosen) // qmllint disable
    onActiveFocusChanged: showChosen()
    onWidthChanged: Qt.callLater(showChosen) // qmllint disable

    Keys.onLeftPressed: choose(chosenIndex - 1)
    Keys.onUpPressed: choose(chosenIndex - 1)
    Keys.onRightPressed: choose(chosenIndex + 1)
    Keys.onDownPressed: choose(chosenIndex + 1)
    Keys.onPressed: event => {
        if (event.key === Qt.Key_Home)
            choose(0);
        else if (event.key === Qt.Key_End)
            choose(count - 1);
        else
            return;
        event.accepted = true;
    }

    Accessible.role: Accessible.Grouping
    Accessible.name: name
    Accessible.description: (currentItem as SegmentPill)?.text ?? ""
    Accessible.focusable: true
    Accessible.focused: activeFocus

    delegate: SegmentPill {
        id: pill

        required property string label

        objectName: "chip" + index
        width: Math.min(implicitWidth, 160)
        modelData: ({ label: label, objectName: "chip" + index })
        chosen: index === root.chosenIndex
        isOutlined: true
        hasKeyboard: chosen && root.activeFocus
        accent: root.accent
        onClicked: root.choose(index)

        FocusRing {
            shown: pill.hasKeyboard
            controlRadius: parent.height / 2
            gap: -2
        }
    }

    // The wheel of a mouse turns one way only.
    WheelHandler {
        onWheel: event => root.contentX = Math.max(0, Math.min(root.contentWidth - root.width,
            root.contentX - event.angleDelta.y - event.angleDelta.x))
    }

    // There is more on that side.
    component Fade: Rectangle {
        property bool atStart: false

        parent: root
        width: Metrics.spacingHuge
        height: root.height
        gradient: Gradient {
            orientation: Gradient.Horizontal
            GradientStop { position: 0; color: atStart ? root.ground : ColorPalette.faded(root.ground, 0) }
            GradientStop { position: 1; color: atStart ? ColorPalette.faded(root.ground, 0) : root.ground }
        }
    }

    Fade {
        visible: !root.atXBeginning
        atStart: true
    }
    Fade {
        x: root.width - width
        visible: !root.atXEnd
    }
}
