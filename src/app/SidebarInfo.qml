import QtQuick
import Brivane.App
import Brivane.Scanner

// What the last finished scan has found.
Column {
    id: root

    required property ScanStats stats

    SidebarHeading {
        width: parent.width
        text: qsTr("Scan Info")
        visible: scanInfo.visible
    }
    SidebarCard {
        id: scanInfo

        objectName: "scanInfoCard"
        width: parent.width
        visible: root.stats.resultFilesText.length > 0
        lines: [
            {label: qsTr("Files"), value: root.stats.resultFilesText},
            {label: qsTr("Time"), value: root.stats.durationText}
        ]
    }

    SidebarHeading {
        width: parent.width
        text: qsTr("Hidden Space")
        visible: hiddenSpace.visible
    }
    SidebarCard {
        id: hiddenSpace

        objectName: "hiddenSpaceCard"
        width: parent.width
        visible: root.stats.hiddenSpaceText.length > 0
        lines: [{icon: "eye.slash.fill", label: qsTr("Hidden space"), value: root.stats.hiddenSpaceText}]
    }
}
