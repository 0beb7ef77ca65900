import QtQuick
import QtQuick.Layouts
import Brivane.Components

// Lines of text over the control that it belongs to, and perhaps something to do about them.
AppPopup {
    id: root

    property list<string> lines
    property string name
    property string actionLabel
    property string actionIcon

    signal actionChosen()

    y: -height - Metrics.spacingSmall
    implicitWidth: 560
    // A popup has the keyboard once it is in: at once, so that no key goes to what lies below.
    enter: null
    exit: null
    onAboutToShow: contentItem.children[0].focus = true // and not the button that had it last time

    contentItem: ColumnLayout {
        spacing: Metrics.spacingMedium
        Accessible.role: Accessible.Dialog
        Accessible.name: root.name

        KeyboardList {
            Layout.fillWidth: true
            Layout.preferredHeight: Math.min(360, count * 24)
            focus: true
            model: root.lines
            name: root.name

            delegate: KeyboardListRow {
                required property string modelData

                width: ListView.view.width
                implicitHeight: 24
                title: modelData
                titleColor: ColorPalette.secondaryText
            }
        }
        CapsuleActionButton {
            objectName: "popupAction"
            Layout.alignment: Qt.AlignRight
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
