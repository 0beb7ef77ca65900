import QtQuick
import QtQuick.Templates as T
import Brivane.Components

// A menu of AppMenuItems. Arrows, Home, End and first letters move, Enter chooses, Escape closes; afterwards
// the keyboard is where it was.
//
// The menu of a list's rows is one for all of them: it keeps the entry that it was opened for, whatever
// becomes of the list meanwhile.
T.Menu {
    id: root

    property var entry

    function openFor(what: var, at: Item, x: real, y: real): void {
        entry = what;
        parent = at;
        popup(at, x, y);
    }

    // The first item from `from` on, by steps of `step`, that can be chosen and begins like that; else -1.
    function find(from: int, step: int, text: string): int {
        for (let tried = 0, at = from; tried < count; ++tried, at += step) {
            const item = itemAt((at + count) % count) as AppMenuItem;
            if (item?.enabled && item.text.toLowerCase().startsWith(text.toLowerCase()))
                return (at + count) % count;
        }
        return -1;
    }

    // For menus that a key has opened.
    function chooseFirst(): void {
        currentIndex = find(0, 1, "");
    }

    function handleKey(event: KeyEvent): bool {
        let found = -1;
        if (event.key === Qt.Key_Home || event.key === Qt.Key_PageUp)
            found = find(0, 1, "");
        else if (event.key === Qt.Key_End || event.key === Qt.Key_PageDown)
            found = find(count - 1, -1, "");
        else if (event.text > " " && !(event.modifiers & (Qt.ControlModifier | Qt.AltModifier)))
            found = find(currentIndex + 1, 1, event.text);
        if (found >= 0)
            currentIndex = found;
        return found >= 0;
    }

    margins: Metrics.spacingSmall
    padding: Metrics.spacingTiny + 2
    implicitWidth: Math.max(180, implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    overlap: 0
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutside
    onAboutToShow: focusReturn.remember(parent)
    onAboutToHide: focusReturn.giveBack()
    onClosed: focusReturn.giveBack()

    readonly property FocusReturn focusReturn: FocusReturn {}

    enter: Transition {
        NumberAnimation { property: "opacity"; from: 0; to: 1; duration: Motion.quick }
    }
    exit: Transition {
        NumberAnimation { property: "opacity"; from: 1; to: 0; duration: Motion.quick }
    }

    background: PopupPanel {}

    contentItem: ListView {
        implicitWidth: {
            let width = 0;
            for (let index = 0; index < root.count; ++index)
                width = Math.max(width, root.itemAt(index).implicitWidth);
            return width;
        }
        implicitHeight: contentHeight
        model: root.contentModel
        interactive: contentHeight > height // the window may be lower than the menu
        clip: interactive
        boundsBehavior: Flickable.StopAtBounds
        T.ScrollBar.vertical: AppScrollBar {}
        currentIndex: root.currentIndex
        Keys.onPressed: event => event.accepted = root.handleKey(event)
        Accessible.role: Accessible.PopupMenu
        Accessible.name: root.title.length > 0 ? root.title : qsTr("Menu")
    }
}
