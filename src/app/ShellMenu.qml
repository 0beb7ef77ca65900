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

    function reach(index: int): void {
        const entry = rows.itemAt((index + rows.count) % rows.count) as ShellMenuRow;
        entry.row.forceActiveFocus(Qt.TabFocusReason);
    }

    objectName: "shellMenu"
    padding: Metrics.spacingTiny + 2
    implicitWidth: 252
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent
    onOpened: {
        if (byKeyboard)
            reach(0);
    }

    Column {
        id: column

        width: parent.width
        focus: true
        Accessible.role: Accessible.PopupMenu
        Accessible.name: qsTr("Menu")
        Keys.onDownPressed: root.reach(0)
        Keys.onUpPressed: root.reach(-1)

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
