import QtQuick
import QtQuick.Templates as T
import Brivane.Components
import Brivane.Removal

// A question over the dimmed window. Escape, the dimmed ground and "Cancel" close it without effect.
T.Popup {
    id: root

    property string icon
    property color iconColor: ColorPalette.danger
    property string title
    property string message
    property string confirmLabel
    property color confirmColor: iconColor
    property bool isAsked: false

    signal confirm()
    signal cancel()

    objectName: "quarantineConfirmOverlay"
    parent: T.Overlay.overlay
    x: Math.round((parent.width - width) / 2)
    y: Math.round((parent.height - height) / 2)
    width: 380
    height: implicitContentHeight + 2 * padding
    padding: Metrics.spacingHuge
    modal: true
    dim: true
    focus: true
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutside
    onIsAskedChanged: isAsked ? open() : close()
    // The safe answer is the one at hand.
    onOpened: cancelButton.forceActiveFocus(Qt.PopupFocusReason)
    onClosed: cancel()

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

    contentItem: Column {
        spacing: Metrics.spacingSmall
        Accessible.role: Accessible.Dialog
        Accessible.name: root.title
        Accessible.description: root.message

        IconTile {
            anchors.horizontalCenter: parent.horizontalCenter
            icon: root.icon
            tint: root.iconColor
            size: 56
        }
        Item {
            width: 1
            height: Metrics.spacingTiny
        }
        AppText {
            objectName: "confirmTitle"
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            text: root.title
            textStyle: AppText.Style.Title
        }
        AppText {
            objectName: "confirmMessage"
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            text: root.message
            color: ColorPalette.secondaryText
        }
        Item {
            width: 1
            height: Metrics.spacingSmall
        }
        Row {
            id: buttons

            readonly property real buttonWidth: (width - spacing) / 2

            width: parent.width
            spacing: Metrics.spacingMedium

            HoverPillButton {
                id: cancelButton

                objectName: "confirmCancel"
                width: buttons.buttonWidth
                height: Metrics.controlHeightLarge
                label: qsTr("Cancel")
                onClicked: root.close()
            }
            CapsuleActionButton {
                objectName: "confirmAccept"
                width: buttons.buttonWidth
                large: true
                label: root.confirmLabel
                color: root.confirmColor
                onClicked: root.confirm()
            }
        }
    }
}
