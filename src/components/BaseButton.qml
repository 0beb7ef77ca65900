import QtQuick
import QtQuick.Templates as T
import Brivane.Components

// What all buttons share: keys, focus ring, tool tip, accessibility. The symbol is `icon.name`.
T.Button {
    id: root

    property real cornerRadius: height / 2
    property string toolTip
    // The state that a fill follows: 0 at rest, 1 under the pointer, 2 pressed.
    readonly property int liveliness: down ? 2 : hovered && enabled ? 1 : 0

    implicitWidth: Math.ceil(implicitContentWidth) + leftPadding + rightPadding
    implicitHeight: Math.max(Metrics.controlHeight, Math.ceil(implicitContentHeight) + topPadding + bottomPadding)
    padding: 0
    leftPadding: Metrics.spacingMedium
    rightPadding: Metrics.spacingMedium
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus

    Accessible.role: Accessible.Button
    Accessible.name: text.length > 0 ? text : toolTip
    // A state "disabled" is not told to screen readers.
    Accessible.description: !enabled ? qsTr("unavailable") : text.length > 0 ? toolTip : ""
    Accessible.onPressAction: root.activate()

    Keys.onReturnPressed: event => root.activateByKey(event)
    Keys.onEnterPressed: event => root.activateByKey(event)

    // Screen readers ask without looking, so a disabled button refuses here as well.
    function activate(): void {
        if (!enabled)
            return;
        if (checkable)
            toggle();
        clicked();
    }

    function activateByKey(event: KeyEvent): void {
        if (!event.isAutoRepeat)
            activate();
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
