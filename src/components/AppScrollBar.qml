import QtQuick
import QtQuick.Templates as T
import Brivane.Components

// A slim scroll bar that comes forward while it is used.
T.ScrollBar {
    id: root

    padding: 2
    implicitWidth: orientation === Qt.Vertical ? 10 : 0
    implicitHeight: orientation === Qt.Horizontal ? 10 : 0
    minimumSize: 0.05
    visible: policy !== T.ScrollBar.AlwaysOff && size < 1

    contentItem: Rectangle {
        implicitWidth: 6
        implicitHeight: 6
        radius: 3
        color: ColorPalette.faded("white", root.pressed ? 0.4 : root.hovered ? 0.3 : 0.16)
        Behavior on color { ColorAnimation { duration: Motion.quick } }
    }
}
