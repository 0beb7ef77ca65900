import QtQuick
import QtQuick.Templates as T
import Brivane.Components

// A menu of AppMenuItems. Arrows move, Enter chooses, Escape closes; afterwards the keyboard is where it was.
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
        Accessible.role: Accessible.PopupMenu
        Accessible.name: root.title.length > 0 ? root.title : qsTr("Menu")
    }
}
