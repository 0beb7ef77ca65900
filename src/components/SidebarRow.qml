import QtQuick
import QtQuick.Templates as T
import Brivane.Components

// What a row of the sidebar is to keyboard, pointer and screen reader. The Tab key stops at one row only;
// from there the sidebar's Up and Down go on.
T.ItemDelegate { // which says that it is a list item; of a button Qt 6.4 does not believe it
    id: root

    property bool isCurrent: false
    property bool isTabStop: false

    function activateByKey(event: KeyEvent): void {
        if (!event.isAutoRepeat)
            clicked();
    }

    implicitHeight: 27
    hoverEnabled: true
    // While it has the keyboard it is a stop as well: the Tab key would not know where to go on from.
    focusPolicy: isTabStop || activeFocus ? Qt.TabFocus : Qt.NoFocus
    Accessible.name: text
    Accessible.selectable: true
    Accessible.selected: isCurrent
    Accessible.onPressAction: clicked()

    Keys.onReturnPressed: event => activateByKey(event)
    Keys.onEnterPressed: event => activateByKey(event)

    FocusRing {
        gap: -2
        shown: root.visualFocus
        controlRadius: Metrics.radiusSmall + 1
    }
}
