import QtQuick
import Brivane.Components

// A scan that failed, why, and another try.
FocusScope {
    id: root

    property string message

    signal retry
    signal back

    objectName: "scanErrorView"

    Column {
        anchors.centerIn: parent
        width: Math.min(parent.width - 2 * Metrics.spacingHuge, 480)
        spacing: Metrics.spacingMedium

        Symbol {
            anchors.horizontalCenter: parent.horizontalCenter
            name: "exclamationmark.triangle.fill"
            size: 48
            color: ColorPalette.warning
        }
        AppText {
            anchors.horizontalCenter: parent.horizontalCenter
            text: qsTr("Scan Failed")
            textStyle: AppText.Style.Title
        }
        AppText {
            objectName: "scanErrorMessage"
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            text: root.message
            color: ColorPalette.secondaryText
        }
        Item {
            width: 1
            height: Metrics.spacingTiny
        }
        Row {
            anchors.horizontalCenter: parent.horizontalCenter
            spacing: Metrics.spacingSmall

            CapsuleActionButton {
                objectName: "showVolumes"
                large: true
                color: ColorPalette.secondaryText
                label: qsTr("Disks")
                icon.name: "chevron.left"
                onClicked: root.back()
            }
            CapsuleActionButton {
                objectName: "retryButton"
                focus: true
                large: true
                label: qsTr("Try Again")
                icon.name: "arrow.clockwise"
                onClicked: root.retry()
            }
        }
    }
}
