import QtQuick
import QtQuick.Templates as T
import Brivane.Components

// A list of KeyboardListRows: one stop of the Tab key. Arrows, Home, End and the Page keys move, Enter and
// Space are told with the entry of the row that the keyboard is on, the Menu key opens that row's menu.
// Whatever else keys do belongs to the screen's own Keys.onPressed, with `currentEntry`.
//
// Sections are ListView's; their delegate is a ListHeading.
ListView {
    id: root

    property string name
    property string emptyText
    // Rows that the model removes fade away. What rearrange() removes is gone at once.
    property bool fadesRows: false

    readonly property KeyboardListRow currentRow: currentItem as KeyboardListRow
    readonly property var currentEntry: currentRow?.entry
    readonly property int rowsInSight: currentItem ? Math.max(1, Math.floor(height / currentItem.height) - 1) : 1

    signal entered(entry: var)
    signal toggled(entry: var)

    // Where an entry is listed, -1 where it is not. To be overridden for rearrange().
    function rowOf(entry: var): int {
        return -1;
    }

    // Puts the keyboard on a row, and that into sight.
    function moveTo(index: int): void {
        currentIndex = Math.max(0, Math.min(count - 1, index));
        positionViewAtIndex(currentIndex, ListView.Contain);
    }

    // Lets `change` filter or sort the rows: at once, and the keyboard stays on its entry.
    function rearrange(change: var): void {
        const entry = currentEntry;
        isRearranged = true;
        change();
        forceLayout();
        isRearranged = false;
        const index = entry === undefined ? -1 : rowOf(entry);
        if (index >= 0)
            moveTo(index);
        else
            currentIndex = activeFocus && count > 0 ? 0 : -1;
    }

    function openMenu(): bool {
        if (!currentRow.openMenu(Metrics.spacingHuge, currentRow.height))
            return false;
        currentRow.menu.chooseFirst();
        return true;
    }

    // The keyboard is always on a row.
    function showCurrent(): void {
        if (activeFocus && currentIndex < 0 && count > 0)
            currentIndex = 0;
    }

    function handleKey(event: KeyEvent): bool {
        switch (event.key) {
        case Qt.Key_Up: moveTo(currentIndex - 1); return true;
        case Qt.Key_Down: moveTo(currentIndex + 1); return true;
        case Qt.Key_PageUp: moveTo(currentIndex - rowsInSight); return true;
        case Qt.Key_PageDown: moveTo(currentIndex + rowsInSight); return true;
        case Qt.Key_Home: moveTo(0); return true;
        case Qt.Key_End: moveTo(count - 1); return true;
        case Qt.Key_Menu: return openMenu();
        case Qt.Key_F10: return (event.modifiers & Qt.ShiftModifier) && openMenu();
        case Qt.Key_Space:
            if (!event.isAutoRepeat)
                toggled(currentEntry);
            return true;
        case Qt.Key_Return:
        case Qt.Key_Enter:
            if (!event.isAutoRepeat)
                entered(currentEntry);
            return true;
        }
        return false;
    }

    clip: true
    currentIndex: -1
    boundsBehavior: Flickable.StopAtBounds
    highlightFollowsCurrentItem: false // it would scroll also when a change of the model moves the row
    keyNavigationEnabled: false
    activeFocusOnTab: true
    onActiveFocusChanged: showCurrent()
    onCountChanged: showCurrent()
    Accessible.role: Accessible.List
    Accessible.name: name
    Accessible.description: count === 0 ? emptyText : ""
    T.ScrollBar.vertical: AppScrollBar {}
    Keys.onPressed: event => {
        if (root.currentRow && root.handleKey(event))
            event.accepted = true;
    }

    AppText {
        parent: root
        anchors.centerIn: parent
        visible: root.count === 0 && text.length > 0
        text: root.emptyText
        color: ColorPalette.secondaryText
        Accessible.ignored: true
    }
    FocusRing { // where there is no row to show it
        parent: root
        gap: -2
        shown: root.activeFocus && root.count === 0
        controlRadius: Metrics.radiusMedium
    }

    property bool isRearranged: false
    readonly property bool isFading: fadesRows && Motion.enabled && !isRearranged
    remove: isFading ? fading : null
    displaced: isFading ? closing : null

    // The gap closes once the row is gone: two rows in one place could not be read.
    readonly property int fadingTime: Motion.milliseconds(120)
    readonly property Transition fading: Transition {
        NumberAnimation {
            property: "opacity"
            to: 0
            duration: root.fadingTime
            easing.type: Easing.OutQuad
        }
    }
    readonly property Transition closing: Transition {
        SequentialAnimation {
            PauseAnimation {
                duration: root.fadingTime
            }
            NumberAnimation {
                property: "y"
                duration: Motion.milliseconds(180)
                easing.type: Easing.OutQuad
            }
        }
    }
}
