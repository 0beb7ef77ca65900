import QtQuick
import Brivane.Components

// The picture of a check box; AppCheckBox is the control.
Rectangle {
    id: root

    property int checkState: Qt.Unchecked
    property color tint: ColorPalette.accent
    property bool isLit: false
    property bool isRound: false

    readonly property bool isEmpty: checkState === Qt.Unchecked

    implicitWidth: 18
    implicitHeight: 18
    radius: isRound ? height / 2 : 5
    color: isEmpty ? "transparent" : tint
    border.width: isEmpty ? 1.5 : 0
    border.color: isLit ? ColorPalette.secondaryText : ColorPalette.subtleText

    Symbol {
        objectName: "tick"
        anchors.centerIn: parent
        visible: !root.isEmpty
        name: root.checkState === Qt.PartiallyChecked ? "minus" : "checkmark"
        size: root.isRound ? 12 : 14
        color: ColorPalette.textOn(root.tint)
    }
}
