import QtQuick
import Brivane.Components

// What a row of the sidebar is to keyboard, pointer and screen reader. The Tab key stops at one row only;
// from there Up and Down go on.
BaseButton {
    id: root

    property bool isCurrent: false
    property bool isTabStop: false

    signal moved(distance: int)
    signal reached

    cornerRadius: Metrics.radiusSmall
    implicitHeight: 27
    focusPolicy: isTabStop ? Qt.TabFocus : Qt.NoFocus
    Accessible.role: Accessible.ListItem
    Accessible.selectable: true
    Accessible.selected: isCurrent

    onActiveFocusChanged: {
        if (activeFocus)
            reached();
    }
    Keys.onUpPressed: moved(-1)
    Keys.onDownPressed: moved(1)
}
