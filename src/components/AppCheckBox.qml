import QtQuick
import Brivane.Components

// A check box, also a mixed one for "some of them". The state belongs to the screen: bind `checkState`, and
// change what it follows in `onClicked`.
BaseButton {
    id: root

    property string label
    property int checkState: Qt.Unchecked
    property color tint: ColorPalette.accent
    property bool isRound: false

    text: label
    role: Accessible.CheckBox
    Accessible.checkable: true
    Accessible.checked: checkState === Qt.Checked
    Accessible.checkStateMixed: checkState === Qt.PartiallyChecked
    Accessible.onToggleAction: activate()
    cornerRadius: Metrics.radiusSmall
    leftPadding: label.length > 0 ? 0 : Metrics.spacingTiny
    rightPadding: label.length > 0 ? Metrics.spacingSmall : Metrics.spacingTiny

    contentItem: Row {
        spacing: Metrics.spacingSmall
        opacity: root.enabled ? 1 : 0.45

        CheckMark {
            anchors.verticalCenter: parent.verticalCenter
            checkState: root.checkState
            tint: root.tint
            isLit: root.liveliness > 0
            isRound: root.isRound
        }
        AppText {
            anchors.verticalCenter: parent.verticalCenter
            visible: text.length > 0
            text: root.label
            Accessible.ignored: true
        }
    }
}
