import QtQuick
import Brivane.Components
import Brivane.Scanner

// What is staged for deletion; opens the list of it.
HoverPillButton {
    id: root

    required property NodeActions actions

    objectName: "stagedButton"
    visible: actions.stagedCount > 0
    color: ColorPalette.lightened(ColorPalette.danger, 0.3)
    icon.name: "trash.fill"
    label: qsTr("%1 staged, %2").arg(actions.stagedCount).arg(actions.stagedSizeText)
    onClicked: popup.open()

    ListPopup {
        id: popup

        objectName: "stagedPopup"
        name: qsTr("Staged for deletion")
        actionLabel: qsTr("Unstage All")
        actionIcon: "arrow.uturn.backward"
        onAboutToShow: lines = root.actions.stagedLines()
        onActionChosen: root.actions.unstageAll()
    }
}
