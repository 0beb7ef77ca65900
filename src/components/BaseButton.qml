import QtQuick
import Brivane.Components

// What all buttons share: keys, focus ring, tool tip, accessibility. The symbol is `icon.name`.
PlainControl {
    id: root

    component Icon: QtObject {
        property string name
    }

    property string text
    readonly property Icon icon: Icon {}
    property real cornerRadius: height / 2
    property string toolTip
    property bool checkable: false
    property bool checked: false
    property int focusPolicy: Qt.StrongFocus
    // What screen readers take it for.
    property int role: Accessible.Button

    readonly property bool hovered: pointer.hovered
    readonly property bool down: area.pressed && area.containsMouse || isSpaceDown
    // The state that a fill follows: 0 at rest, 1 under the pointer, 2 pressed.
    readonly property int liveliness: down ? 2 : hovered && enabled ? 1 : 0
    property bool isSpaceDown: false

    signal pressed()
    signal canceled()
    signal clicked()

    // Screen readers ask without looking, so a disabled button refuses here as well.
    function activate(): void {
        if (!enabled)
            return;
        if (checkable)
            checked = !checked;
        clicked();
    }

    implicitWidth: Math.ceil(implicitContentWidth) + leftPadding + rightPadding
    implicitHeight: Math.max(Metrics.controlHeight, Math.ceil(implicitContentHeight) + topPadding + bottomPadding)
    leftPadding: Metrics.spacingMedium
    rightPadding: Metrics.spacingMedium
    activeFocusOnTab: (focusPolicy & Qt.TabFocus) !== 0
    onActiveFocusChanged: isSpaceDown = false

    Accessible.role: role
    Accessible.name: text.length > 0 ? text : toolTip
    // A state "disabled" is not told to screen readers.
    Accessible.description: !enabled ? qsTr("unavailable") : text.length > 0 ? toolTip : ""
    Accessible.focusable: activeFocusOnTab
    Accessible.focused: activeFocus
    Accessible.pressed: down
    Accessible.checkable: checkable
    Accessible.checked: checked
    Accessible.onPressAction: root.activate()

    Keys.onPressed: event => {
        // What is held down was pressed elsewhere.
        if (event.key === Qt.Key_Space)
            isSpaceDown = isSpaceDown || !event.isAutoRepeat;
        else if (event.key !== Qt.Key_Return && event.key !== Qt.Key_Enter)
            return;
        else if (!event.isAutoRepeat)
            activate();
        event.accepted = true;
    }
    Keys.onReleased: event => {
        if (event.key !== Qt.Key_Space || event.isAutoRepeat || !isSpaceDown)
            return;
        isSpaceDown = false;
        activate();
        event.accepted = true;
    }

    MouseArea {
        id: area

        anchors.fill: parent
        onPressed: {
            if (root.focusPolicy & Qt.ClickFocus)
                root.forceActiveFocus(Qt.MouseFocusReason);
            root.pressed();
        }
        onCanceled: root.canceled()
        onClicked: root.activate()
    }
    HoverHandler {
        id: pointer
    }

    FocusRing {
        shown: root.visualFocus
        controlRadius: root.cornerRadius
    }

    ToolTipArea {
        text: root.toolTip
        focusShown: root.visualFocus
    }
}
