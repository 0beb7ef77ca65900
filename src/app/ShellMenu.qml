import QtQuick
import QtQuick.Templates as T
import Brivane.App
import Brivane.Components

// The application menu: what can be chosen, by group, with the keys that do the same.
T.Popup {
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
    implicitHeight: column.implicitHeight + topPadding + bottomPadding
    focus: true
    modal: false
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent
    onOpened: {
        if (byKeyboard)
            reach(0);
    }

    enter: Transition {
        NumberAnimation { property: "opacity"; from: 0; to: 1; duration: Motion.quick }
    }
    exit: Transition {
        NumberAnimation { property: "opacity"; from: 1; to: 0; duration: Motion.quick }
    }

    background: Rectangle {
        radius: Metrics.radiusMedium
        color: ColorPalette.surfaceLight
        border.width: 1
        border.color: ColorPalette.hairlineStrong

        SoftShadow {
            z: -1
            radius: parent.radius
        }
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
