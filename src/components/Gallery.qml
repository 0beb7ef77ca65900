import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Brivane.Components

// Every component in every state, on one page: for looking at them, and for the tests.
Rectangle {
    id: root

    color: ColorPalette.windowBackground

    Flickable {
        id: flickable

        objectName: "galleryFlickable"
        anchors.fill: parent
        contentWidth: width
        contentHeight: page.implicitHeight
        boundsBehavior: Flickable.StopAtBounds
        T.ScrollBar.vertical: AppScrollBar { }

        ContentColumn {
            id: page

            width: flickable.width
            maxWidth: 1120
            spacing: Metrics.spacingHuge

            ModuleHeader {
                Layout.fillWidth: true
                title: qsTr("Components")
                subtitle: qsTr("Every component in every state, as the modules put them together.")
                scanLabel: qsTr("Rescan")

                HeaderStat { value: qsTr("1,204"); caption: qsTr("files") }
                HeaderStat { value: qsTr("8.3 GB"); caption: qsTr("reclaimable"); tint: ColorPalette.warning }
            }
            ModuleHeader {
                Layout.fillWidth: true
                title: qsTr("Scanning")
                subtitle: qsTr("The button holds a spinner until the scan is over.")
                scanLabel: qsTr("Scan")
                isScanning: true
                accent: ColorPalette.purple
            }
            GridLayout {
                Layout.fillWidth: true
                columns: root.width >= 1000 ? 2 : 1
                columnSpacing: Metrics.spacingHuge
                rowSpacing: Metrics.spacingHuge

                GalleryButtons { Layout.fillWidth: true; Layout.fillHeight: true; Layout.preferredWidth: 1 }
                GalleryCards { Layout.fillWidth: true; Layout.fillHeight: true; Layout.preferredWidth: 1 }
                GallerySection {
                    Layout.fillWidth: true
                    Layout.fillHeight: true
                    Layout.preferredWidth: 1
                    title: qsTr("Scan in progress")
                    centred: true

                    ScanningPulseView {
                        Layout.alignment: Qt.AlignCenter
                        icon: "sparkle.magnifyingglass"
                        status: qsTr("Looking for traces…")
                        caption: qsTr("History, cookies, recent items")
                        accent: ColorPalette.purple
                    }
                }
                GalleryChoices { Layout.fillWidth: true; Layout.fillHeight: true; Layout.preferredWidth: 1 }
                GalleryLists { Layout.fillWidth: true; Layout.fillHeight: true; Layout.preferredWidth: 1 }
                GalleryPages { Layout.fillWidth: true; Layout.fillHeight: true; Layout.preferredWidth: 1 }
                GalleryType { Layout.fillWidth: true; Layout.columnSpan: root.width >= 1000 ? 2 : 1 }
            }
        }
    }
}
