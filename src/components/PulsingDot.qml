import QtQuick
import Brivane.Components

// A dot that breathes while something is under way. Without motion it stays lit.
Item {
    id: root

    property color color: ColorPalette.accent
    property real phase
    readonly property real glow: Motion.enabled ? phase : 1
    readonly property bool isPulsing: pulse.running

    implicitWidth: 12
    implicitHeight: 12

    SequentialAnimation on phase {
        id: pulse

        running: root.visible && Motion.enabled
        loops: Animation.Infinite
        NumberAnimation { from: 0; to: 1; duration: 1000; easing.type: Easing.InOutQuad }
        NumberAnimation { from: 1; to: 0; duration: 1000; easing.type: Easing.InOutQuad }
    }

    Rectangle {
        anchors.centerIn: parent
        width: 12
        height: 12
        radius: 6
        color: ColorPalette.faded(root.color, 0.05 + 0.2 * root.glow)
    }
    Repeater { // the glow
        model: 3

        Rectangle {
            required property int index

            anchors.centerIn: parent
            width: 6 + 2 * (1 + 3 * root.glow) * (index + 1) / 3
            height: width
            radius: width / 2
            color: ColorPalette.faded(root.color, 0.04 + 0.08 * root.glow)
        }
    }
    Rectangle {
        anchors.centerIn: parent
        width: 6
        height: 6
        radius: 3
        color: ColorPalette.faded(root.color, 0.4 + 0.5 * root.glow)
    }
}
