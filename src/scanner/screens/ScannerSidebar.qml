import QtQuick
import Brivane.Components
import Brivane.Scanner

// The scanner in the sidebar: the volumes to choose from, and what the last finished scan has found.
SidebarPart {
    id: root

    required property ScanViewModel viewModel

    readonly property ScanStats stats: viewModel.stats

    footer: ScannerSidebarFooter {
        scan: root.viewModel
    }

    SidebarHeading {
        width: parent.width
        text: qsTr("Volumes")
        visible: volumeRows.count > 0
    }
    Column {
        id: volumeColumn

        width: parent.width
        Accessible.role: Accessible.List
        Accessible.name: qsTr("Volumes")

        Repeater {
            id: volumeRows

            model: root.viewModel.volumes

            SidebarVolumeRow {
                width: volumeColumn.width
                isCurrent: mountPoint === root.viewModel.selectedMountPoint
                onChosen: root.viewModel.selectVolume(mountPoint)
            }
        }
    }

    SidebarHeading {
        width: parent.width
        text: scanInfo.text
        visible: scanInfo.visible
    }
    SidebarCard {
        id: scanInfo

        objectName: "scanInfoCard"
        width: parent.width
        visible: root.stats.resultFilesText.length > 0
        text: qsTr("Scan Info")
        lines: [
            {label: qsTr("Files"), value: root.stats.resultFilesText},
            {label: qsTr("Time"), value: root.stats.durationText}
        ]
    }

    SidebarHeading {
        width: parent.width
        text: hiddenSpace.text
        visible: hiddenSpace.visible
    }
    SidebarCard {
        id: hiddenSpace

        objectName: "hiddenSpaceCard"
        width: parent.width
        visible: root.stats.hiddenSpaceText.length > 0
        text: qsTr("Hidden Space")
        lines: [{icon: "eye.slash.fill", label: qsTr("Hidden space"), value: root.stats.hiddenSpaceText}]
    }
}
