import QtQuick
import Brivane.Components
import Brivane.Scanner

// What can be done with a finished scan. Takes no room while there is none.
Item {
    id: root

    required property ScanViewModel scan

    readonly property bool isShown: scan.scanState === ScanViewModel.Completed

    implicitHeight: isShown ? 48 : 0
    visible: isShown

    Rectangle {
        width: parent.width
        height: 1
        color: ColorPalette.hairline
    }

    Row {
        id: buttons

        readonly property real share: (width - spacing) / 2

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.margins: Metrics.spacingSmall
        anchors.verticalCenter: parent.verticalCenter
        spacing: Metrics.spacingSmall

        CapsuleActionButton {
            objectName: "sidebarRescan"
            width: buttons.share
            height: Metrics.controlHeightLarge
            leftPadding: Metrics.spacingTiny // what they say fills them
            rightPadding: Metrics.spacingTiny
            label: qsTr("Rescan")
            icon.name: "arrow.clockwise"
            onClicked: root.scan.rescan()
        }

        CapsuleActionButton {
            objectName: "sidebarAdminScan"
            width: buttons.share
            height: Metrics.controlHeightLarge
            leftPadding: Metrics.spacingTiny // what they say fills them
            rightPadding: Metrics.spacingTiny
            label: qsTr("Admin Scan")
            icon.name: "lock.shield.fill"
            color: ColorPalette.secondaryText
            onClicked: root.scan.rescanAsAdmin()
        }
    }
}
