import QtQuick
import Brivane.Components
import Brivane.Scanner

// What can be done with one entry.
AppMenu {
    id: root

    required property NodeActions actions
    property bool isStaged: false

    onAboutToShow: isStaged = actions.isStaged(entry)
    objectName: "rowMenu"

    AppMenuItem {
        objectName: "menuReveal"
        text: qsTr("Reveal in Files")
        icon.name: "folder"
        onTriggered: root.actions.reveal(root.entry)
    }
    AppMenuItem {
        objectName: "menuCopyPath"
        text: qsTr("Copy Path")
        icon.name: "doc.on.clipboard.fill"
        keys: qsTr("Ctrl+C")
        onTriggered: root.actions.copyPath(root.entry)
    }
    AppMenuItem {
        objectName: "menuStage"
        text: root.isStaged ? qsTr("Unstage") : qsTr("Stage for Deletion")
        icon.name: root.isStaged ? "arrow.uturn.backward" : "trash"
        keys: qsTr("Del")
        onTriggered: root.actions.toggleStaged(root.entry)
    }
}
