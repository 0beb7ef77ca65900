import QtQuick
import QtQuick.Templates as T
import Brivane.Components

// What lies over a screen for a moment and takes the keyboard: lists, questions, panels. Escape and a press
// outside close it, and whatever had the keyboard has it again.
T.Popup {
    id: root

    margins: Metrics.spacingSmall
    padding: Metrics.spacingMedium
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    focus: true
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
}
