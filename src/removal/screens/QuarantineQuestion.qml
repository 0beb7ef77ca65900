import QtQuick
import Brivane.Components

// What stands in QuarantineConfirmOverlay: the question and its two answers.
Column {
    id: root

    property string icon
    property color iconColor
    property string title
    property string message
    property string confirmLabel
    property color confirmColor

    signal confirm()
    signal cancel()

    // The safe answer is the one at hand.
    function takeFocus(): void {
        cancelButton.forceActiveFocus(Qt.PopupFocusReason);
    }

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

        CapsuleActionButton {
            id: cancelButton

            objectName: "confirmCancel"
            width: buttons.buttonWidth
            large: true
            label: qsTr("Cancel")
            color: ColorPalette.gray
            onClicked: root.cancel()
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