import QtQuick
import Brivane.Components

// Something that is on or off, at once. The state belongs to the screen: bind `isOn`, and change what it
// follows in `onClicked`.
BaseButton {
    id: root

    property string label
    property bool isOn: false
    property color tint: ColorPalette.accent

    text: label
    role: Accessible.CheckBox
    Accessible.checkable: true
    Accessible.checked: isOn
    Accessible.onToggleAction: activate()
    leftPadding: 0
    rightPadding: 0

    contentItem: Row {
        spacing: Metrics.spacingSmall
        opacity: root.enabled ? 1 : 0.45

        Rectangle {
            anchors.verticalCenter: parent.verticalCenter
            width: 34
            height: 20
            radius: height / 2
            color: root.isOn ? root.tint : ColorPalette.faded("white", [0.12, 0.17, 0.2][root.liveliness])
            Behavior on color { ColorAnimation { duration: Motion.quick } }

            Rectangle {
                x: root.isOn ? parent.width - width - 2 : 2
                y: 2
                width: 16
                height: 16
                radius: 8
                color: "white"
                Behavior on x { NumberAnimation { duration: Motion.quick; easing.type: Easing.OutCubic } }
            }
        }
        AppText {
            anchors.verticalCenter: parent.verticalCenter
            visible: text.length > 0
            text: root.label
            Accessible.ignored: true
        }
    }
}
