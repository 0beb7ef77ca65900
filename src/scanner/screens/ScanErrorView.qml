import QtQuick
import Brivane.Components

// A scan that failed, why, and another try.
EmptyPage {
    id: root

    property string message

    signal retry
    signal back

    objectName: "scanErrorView"
    icon: "exclamationmark.triangle.fill"
    tint: ColorPalette.warning
    title: qsTr("Scan Failed")
    text: message

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
