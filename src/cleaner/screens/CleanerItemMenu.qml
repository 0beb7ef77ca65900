import QtQuick
import Brivane.Components
import Brivane.Cleaner

// What can be done with one item.
AppMenu {
    id: root

    required property CleanerViewModel viewModel

    property bool isSelected: false

    objectName: "cleanerItemMenu"
    onAboutToShow: isSelected = viewModel.detail.isSelected(entry)

    AppMenuItem {
        objectName: "menuReveal"
        text: qsTr("Reveal in Finder")
        icon.name: "folder"
        onTriggered: root.viewModel.reveal(root.entry.path)
    }
    AppMenuItem {
        objectName: "menuSelect"
        text: root.isSelected ? qsTr("Deselect") : qsTr("Select")
        icon.name: root.isSelected ? "square" : "checkmark.square.fill"
        keys: qsTr("Space")
        onTriggered: root.viewModel.detail.toggle(root.entry)
    }
    AppMenuItem {
        objectName: "menuCopyPath"
        text: qsTr("Copy Path")
        icon.name: "doc.on.clipboard.fill"
        keys: qsTr("Ctrl+C")
        onTriggered: root.viewModel.copyPath(root.entry.path)
    }
    AppMenuItem {
        objectName: "menuNeverTouch"
        text: qsTr("Never touch this")
        icon.name: "lock.fill"
        onTriggered: root.viewModel.neverTouch(root.entry)
    }
}
