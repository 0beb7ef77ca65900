import QtQuick
import Brivane.Components
import Brivane.Scanner

// Where a scan begins: a card for each volume, and any folder besides.
FocusScope {
    id: root

    required property ScanViewModel viewModel

    signal folderRequested

    objectName: "volumePickerView"

    Flickable {
        id: flickable

        anchors.fill: parent
        contentWidth: width
        contentHeight: Math.max(height, column.height + 2 * Metrics.spacingHuge)
        boundsBehavior: Flickable.StopAtBounds
        clip: true

        Column {
            id: column

            anchors.centerIn: parent
            width: Math.min(flickable.width - 2 * Metrics.spacingHuge, 560)
            spacing: Metrics.spacingSmall

            IconTile {
                anchors.horizontalCenter: parent.horizontalCenter
                icon: "internaldrive.fill"
                size: 56
            }
            Item {
                width: 1
                height: Metrics.spacingTiny
            }
            AppText {
                anchors.horizontalCenter: parent.horizontalCenter
                text: qsTr("Select a disk to scan")
                textStyle: AppText.Style.LargeTitle
            }
            AppText {
                anchors.horizontalCenter: parent.horizontalCenter
                text: qsTr("Choose a volume to analyze its space usage")
                color: ColorPalette.secondaryText
            }
            Item {
                width: 1
                height: Metrics.spacingLarge
            }

            Repeater {
                model: root.viewModel.volumes

                VolumeCard {
                    required property int index

                    width: column.width
                    focus: index === 0
                    isSelected: mountPoint === root.viewModel.selectedMountPoint
                    onClicked: {
                        root.viewModel.selectVolume(mountPoint);
                        root.viewModel.startScan(mountPoint);
                    }
                }
            }

            Item {
                width: 1
                height: Metrics.spacingSmall
            }
            CapsuleActionButton {
                objectName: "chooseFolder"
                anchors.horizontalCenter: parent.horizontalCenter
                large: true
                label: qsTr("Choose Folder…")
                icon.name: "folder"
                onClicked: root.folderRequested()
            }
        }
    }

    DropArea {
        id: dropArea

        anchors.fill: parent
        onDropped: drop => {
            if (drop.hasUrls && drop.urls.length === 1)
                root.viewModel.scanFolderUrl(drop.urls[0]);
        }

        Rectangle {
            anchors.fill: parent
            anchors.margins: Metrics.spacingSmall
            visible: dropArea.containsDrag
            radius: Metrics.radiusLarge
            color: ColorPalette.faded(ColorPalette.accent, 0.08)
            border.color: ColorPalette.accent
            border.width: 2
        }
    }
}
