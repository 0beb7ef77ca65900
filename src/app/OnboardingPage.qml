import QtQuick
import Brivane.Components

// The first page of a first start.
FocusScope {
    id: root

    signal finished

    objectName: "onboardingPage"

    Column {
        anchors.centerIn: parent
        width: Math.min(parent.width - 2 * Metrics.spacingHuge, 460)
        spacing: Metrics.spacingLarge

        IconTile {
            anchors.horizontalCenter: parent.horizontalCenter
            icon: "internaldrive.fill"
            tint: ColorPalette.accent
            size: 72
        }
        AppText {
            anchors.horizontalCenter: parent.horizontalCenter
            text: qsTr("Welcome to Brivane")
            textStyle: AppText.Style.LargeTitle
        }
        AppText {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.WordWrap
            color: ColorPalette.secondaryText
            text: qsTr("See what fills your disks. Nothing leaves this machine, and nothing is changed without your word.")
        }
        Item {
            width: 1
            height: Metrics.spacingSmall
        }
        ProminentActionButton {
            objectName: "onboardingContinue"
            anchors.horizontalCenter: parent.horizontalCenter
            focus: true
            label: qsTr("Continue")
            icon.name: "chevron.right"
            colors: [ColorPalette.accent, Qt.darker(ColorPalette.accent, 1.3)]
            onClicked: root.finished()
        }
    }
}
