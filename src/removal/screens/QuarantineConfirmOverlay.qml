import QtQuick
import QtQuick.Templates as T
import Brivane.Components
import Brivane.Removal

// A question over the dimmed window. Escape, the dimmed ground and "Cancel" close it without effect. What
// had the keyboard gets it back.
T.Popup {
    id: root

    property string icon
    property color iconColor: ColorPalette.danger
    property string title
    property string message
    property string confirmLabel
    property color confirmColor: iconColor
    property bool isAsked: false
    property Item opener
    property int openerReason

    signal confirm()
    signal cancel()

    objectName: "quarantineConfirmOverlay"
    parent: T.Overlay.overlay
    x: Math.round((parent.width - width) / 2)
    y: Math.round((parent.height - height) / 2)
    width: 460
    height: implicitContentHeight + 2 * padding
    padding: Metrics.spacingHuge
    modal: true
    dim: true
    focus: true
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutside
    onIsAskedChanged: isAsked ? open() : close()
    onAboutToShow: {
        opener = parent.Window.activeFocusItem;
        const control = opener as T.Control;
        openerReason = control ? control.focusReason : Qt.PopupFocusReason;
    }
    onOpened: (contentItem as QuarantineQuestion).takeFocus()
    onClosed: {
        if (opener)
            opener.forceActiveFocus(openerReason);
        cancel();
    }

    T.Overlay.modal: Rectangle {
        color: ColorPalette.faded("black", 0.55)
    }

    enter: Transition {
        NumberAnimation { property: "opacity"; from: 0; to: 1; duration: Motion.standard }
        Spring { property: "scale"; from: 0.94; to: 1; response: 0.3; damping: 0.85 }
    }
    exit: Transition {
        NumberAnimation { property: "opacity"; from: 1; to: 0; duration: Motion.quick }
    }

    background: Rectangle {
        radius: Metrics.radiusLarge
        color: ColorPalette.surfaceLight
        border.width: 1
        border.color: ColorPalette.hairlineStrong

        SoftShadow {
            z: -1
            radius: parent.radius
            blur: 24
        }
    }

    contentItem: QuarantineQuestion {
        icon: root.icon
        iconColor: root.iconColor
        title: root.title
        message: root.message
        confirmLabel: root.confirmLabel
        confirmColor: root.confirmColor
        onConfirm: root.confirm()
        onCancel: root.close()
    }
}
