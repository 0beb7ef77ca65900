import QtQuick
import QtQuick.Templates as T
import Brivane.App
import Brivane.Components

// The application menu: what can be chosen, by group, with the keys that do the same.
AppPopup {
    id: root

    required property ShellViewModel shell
    property bool byKeyboard: false

    // Opens or closes; opened by keyboard, it begins with its first item.
    function toggle(isByKeyboard: bool): void {
        byKeyboard = isByKeyboard;
        if (visible)
            close();
        else
            open();
    }

    // Past an end it goes on from the other.
    function reach(index: int): void {
        const entry = rows.itemAt((index + rows.count) % rows.count) as ShellMenuRow;
        entry.row.forceActiveFocus(Qt.TabFocusReason);
    }

    // To the next item that begins like that.
    function reachText(text: string): bool {
        const entries = Array.from({ length: rows.count }, (_, index) => rows.itemAt(index) as ShellMenuRow);
        const from = entries.findIndex(entry => entry.row.activeFocus) + 1;
        const next = entries.slice(from).concat(entries.slice(0, from))
            .find(entry => entry.title.toLowerCase().startsWith(text.toLowerCase()));
        next?.row.forceActiveFocus(Qt.TabFocusReason);
        return next !== undefined;
    }

    objectName: "shellMenu"
    padding: Metrics.spacingTiny + 2
    implicitWidth: 252
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent
    onAboutToShow: (byKeyboard ? (rows.itemAt(0) as ShellMenuRow).row : column).focus = true

    Connections {
        target: root.shell

        function onAppModeChanged(): void {
            root.close();
        }
    }

    Column {
        id: column

        width: parent.width
        focus: true
        Accessible.role: Accessible.PopupMenu
        Accessible.name: qsTr("Menu")
        Keys.onPressed: event => {
            if (event.key === Qt.Key_Down || event.key === Qt.Key_Home || event.key === Qt.Key_PageUp)
                root.reach(0);
            else if (event.key === Qt.Key_Up || event.key === Qt.Key_End || event.key === Qt.Key_PageDown)
                root.reach(-1);
            else if (!(event.text > " " && root.reachText(event.text)))
                return;
            event.accepted = true;
        }

        Repeater {
            id: rows

            model: root.shell.menu

            ShellMenuRow {
                width: root.availableWidth
                onChosen: {
                    root.close();
                    root.shell.post(notification);
                }
                onMoved: distance => root.reach(index + distance)
            }
        }
    }
}
