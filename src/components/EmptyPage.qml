import QtQuick
import Brivane.Components

// What a screen shows where there is nothing to show yet, or any more: a symbol, a title, a text, what to do
// about it and a footer. Its children are controls beside the button, which is there when it has a label.
FocusScope {
    id: root

    property string icon
    property color tint: ColorPalette.accent
    property string title
    property string text
    property string footer
    property string buttonLabel
    property string buttonIcon
    property list<color> buttonColors
    default property alias controls: row.data

    signal pressed()

    // Without a control the page itself has the keyboard.
    Accessible.role: Accessible.Grouping
    Accessible.name: title
    Accessible.description: text

    implicitWidth: 480 + 2 * Metrics.spacingHuge
    implicitHeight: column.implicitHeight

    Column {
        id: column

        anchors.centerIn: parent
        width: Math.min(root.width - 2 * Metrics.spacingHuge, 480)
        spacing: Metrics.spacingSmall

        IconTile {
            anchors.horizontalCenter: parent.horizontalCenter
            icon: root.icon
            tint: root.tint
            size: 80
        }
        Item {
            width: 1
            height: Metrics.spacingSmall
        }
        AppText {
            objectName: "emptyPageTitle"
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            text: root.title
            textStyle: AppText.Style.Title
        }
        AppText {
            objectName: "emptyPageText"
            width: parent.width
            visible: text.length > 0
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            lineHeight: 1.3
            color: ColorPalette.secondaryText
            text: root.text
        }
        Item {
            width: 1
            height: Metrics.spacingSmall
            visible: row.visible
        }
        Row {
            id: row

            anchors.horizontalCenter: parent.horizontalCenter
            visible: children.length > 1 || button.visible
            spacing: Metrics.spacingSmall

            ProminentActionButton {
                id: button

                objectName: "emptyPageButton"
                visible: root.buttonLabel.length > 0
                focus: visible
                label: root.buttonLabel
                icon.name: root.buttonIcon
                colors: root.buttonColors.length > 0 ? root.buttonColors : [root.tint, Qt.darker(root.tint, 1.3)]
                onClicked: root.pressed()
            }
        }
        AppText {
            width: parent.width
            visible: text.length > 0
            topPadding: Metrics.spacingSmall
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            text: root.footer
            textStyle: AppText.Style.Caption
        }
    }
}
