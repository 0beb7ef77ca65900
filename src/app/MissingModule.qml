import QtQuick
import Brivane.App
import Brivane.Components

// The page of a module that is not there yet: what it is, and that it is not there.
EmptyPage {
    id: root

    required property ShellViewModel shell

    objectName: "missingModule"
    icon: shell.iconName
    tint: shell.accent
    title: shell.title
    text: qsTr("This module is not part of this version yet.")
}
