import QtQuick
import Brivane.Components
import Brivane.Removal

// What can be done with one item.
AppMenu {
    id: root

    required property QuarantineViewModel viewModel

    objectName: "quarantineMenu"

    AppMenuItem {
        objectName: "menuRestore"
        enabled: !root.viewModel.isReadOnly
        text: qsTr("Restore")
        icon.name: "arrow.uturn.backward"
        onTriggered: root.viewModel.restore(root.entry)
    }
    AppMenuItem {
        objectName: "menuDelete"
        enabled: !root.viewModel.isReadOnly
        text: qsTr("Delete Permanently")
        icon.name: "trash"
        onTriggered: root.viewModel.permanentlyDelete(root.entry)
    }
    AppMenuItem {
        objectName: "menuReveal"
        text: qsTr("Reveal Original Folder")
        icon.name: "folder"
        onTriggered: root.viewModel.revealOriginalFolder(root.entry)
    }
    AppMenuItem {
        objectName: "menuCopyPath"
        text: qsTr("Copy Original Path")
        icon.name: "doc.on.clipboard.fill"
        keys: qsTr("Ctrl+C")
        onTriggered: root.viewModel.copyOriginalPath(root.entry)
    }
}
