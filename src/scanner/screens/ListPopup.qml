import QtQuick
import QtQuick.Templates as T
import Brivane.Components
import Brivane.Scanner

// Lines over the bar below a scan, and perhaps something to do about them. The button that it belongs to
// has the keyboard afterwards; or, if that is gone, what comes after it.
T.Popup {
    id: root

    property list<string> lines
    property string name
    property string actionLabel
    property string actionIcon
    property int openerReason

    signal actionChosen

    readonly property real listHeight: Math.min(360, lines.length * 24)

    y: -height - Metrics.spacingSmall
    width: 560
    margins: Metrics.spacingSmall
    height: listHeight + (actionLabel.length > 0 ? Metrics.controlHeight + Metrics.spacingMedium : 0) + 2 * padding
    padding: Metrics.spacingMedium
    focus: true
    onAboutToShow: openerReason = (parent as T.Control).focusReason
    onClosed: (parent.visible ? parent : parent.nextItemInFocusChain()).forceActiveFocus(openerReason)
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutside

    background: Rectangle {
        radius: Metrics.radiusMedium
        color: ColorPalette.surfaceLight
        border.color: ColorPalette.hairlineStrong

        SoftShadow {
            z: -1
            radius: parent.radius
        }
    }
    contentItem: FocusScope {
        focus: true

        LineList {
            width: parent.width
            height: root.listHeight
            focus: true
            lines: root.lines
            Accessible.name: root.name
        }
        CapsuleActionButton {
            objectName: "popupAction"
            anchors.right: parent.right
            anchors.bottom: parent.bottom
            visible: root.actionLabel.length > 0
            label: root.actionLabel
            icon.name: root.actionIcon
            onClicked: {
                root.actionChosen();
                root.close();
            }
        }
    }
}
