import QtQuick
import Brivane.Components
import Brivane.Removal

// What can be done with one item. It keeps the item that it was opened for, whatever becomes of the list
// meanwhile.
AppMenu {
    id: root

    required property QuarantineViewModel viewModel
    property quarantineItem item

    function openFor(entry: quarantineItem, row: Item, x: real, y: real): void {
        item = entry;
        parent = row;
        popup(row, x, y);
    }

    objectName: "quarantineMenu"

    AppMenuItem {
        objectName: "menuRestore"
        enabled: !root.viewModel.isReadOnly
        text: qsTr("Restore")
        icon.name: "arrow.uturn.backward"
        onTriggered: root.viewModel.restore(root.item)
    }
    AppMenuItem {
        objectName: "menuDelete"
        enabled: !root.viewModel.isReadOnly
        text: qsTr("Delete Permanently")
        icon.name: "trash"
        onTriggered: root.viewModel.permanentlyDelete(root.item)
    }
    AppMenuItem {
        objectName: "menuReveal"
        text: qsTr("Reveal Original Folder")
        icon.name: "folder"
        onTriggered: root.viewModel.revealOriginalFolder(root.item)
    }
    AppMenuItem {
        objectName: "menuCopyPath"
        text: qsTr("Copy Original Path")
        icon.name: "doc.on.clipboard.fill"
        keys: qsTr("Ctrl+C")
        onTriggered: root.viewModel.copyOriginalPath(root.item)
    }
}
