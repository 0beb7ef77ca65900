import QtQuick
import Brivane.App
import Brivane.Components

// The page of a module that is not there yet: what it is, and that it is not there.
FocusScope {
    id: root

    required property ShellViewModel shell

    objectName: "missingModule"

    Column {
        anchors.centerIn: parent
        width: Math.min(parent.width - 2 * Metrics.spacingHuge, 460)
        spacing: Metrics.spacingSmall

        IconTile {
            anchors.horizontalCenter: parent.horizontalCenter
            icon: root.shell.iconName
            tint: root.shell.accent
            size: 80
        }
        Item {
            width: 1
            height: Metrics.spacingSmall
        }
        AppText {
            objectName: "missingModuleTitle"
            anchors.horizontalCenter: parent.horizontalCenter
            text: root.shell.title
            textStyle: AppText.Style.LargeTitle
        }
        AppText {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.WordWrap
            color: ColorPalette.secondaryText
            text: qsTr("This module is not part of this version yet.")
        }
    }
}
