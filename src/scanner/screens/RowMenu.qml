import QtQuick
import Brivane.Components
import Brivane.Scanner

// What can be done with one entry. It keeps the entry that it was opened for, whatever becomes of the
// list meanwhile.
AppMenu {
    id: root

    required property NodeActions actions
    property fileNode node
    property bool isStaged: false

    function openFor(entry: fileNode, item: Item, x: real, y: real): void {
        node = entry;
        isStaged = actions.isStaged(entry);
        parent = item;
        popup(item, x, y);
    }

    objectName: "rowMenu"

    AppMenuItem {
        objectName: "menuReveal"
        text: qsTr("Reveal in Files")
        icon.name: "folder"
        onTriggered: root.actions.reveal(root.node)
    }
    AppMenuItem {
        objectName: "menuCopyPath"
        text: qsTr("Copy Path")
        icon.name: "doc.on.clipboard.fill"
        keys: qsTr("Ctrl+C")
        onTriggered: root.actions.copyPath(root.node)
    }
    AppMenuItem {
        objectName: "menuStage"
        text: root.isStaged ? qsTr("Unstage") : qsTr("Stage for Deletion")
        icon.name: root.isStaged ? "arrow.uturn.backward" : "trash"
        keys: qsTr("Del")
        onTriggered: root.actions.toggleStaged(root.node)
    }
}
