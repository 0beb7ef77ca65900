import QtQuick
import Brivane.Components

// What a scan is doing, over its list.
Item {
    id: root

    property string status
    property color statusColor: ColorPalette.secondaryText
    property string path
    property bool isBusy: false
    property bool showsBack: false

    signal back

    implicitHeight: 48

    CapsuleActionButton {
        id: backButton

        objectName: "showVolumes"
        anchors.left: parent.left
        anchors.leftMargin: Metrics.spacingLarge
        anchors.verticalCenter: parent.verticalCenter
        visible: root.showsBack
        color: ColorPalette.secondaryText
        label: qsTr("Disks")
        icon.name: "chevron.left"
        onClicked: root.back()
    }

    Row {
        id: state

        anchors.left: root.showsBack ? backButton.right : parent.left
        anchors.leftMargin: root.showsBack ? Metrics.spacingMedium : Metrics.spacingHuge
        anchors.verticalCenter: parent.verticalCenter
        spacing: Metrics.spacingSmall

        PulsingDot {
            anchors.verticalCenter: parent.verticalCenter
            visible: root.isBusy
            color: ColorPalette.accent
        }
        AppText {
            objectName: "scanStatus"
            anchors.verticalCenter: parent.verticalCenter
            text: root.status
            textStyle: AppText.Style.BodyStrong
            color: root.statusColor
        }
    }

    AppText {
        anchors.left: state.right
        anchors.leftMargin: Metrics.spacingLarge
        anchors.right: parent.right
        anchors.rightMargin: Metrics.spacingHuge
        anchors.verticalCenter: parent.verticalCenter
        horizontalAlignment: Text.AlignRight
        elide: Text.ElideMiddle
        text: root.path
        textStyle: AppText.Style.Caption
        color: ColorPalette.secondaryText
        Accessible.ignored: true
    }

    Rectangle {
        anchors.bottom: parent.bottom
        width: parent.width
        height: 1
        color: ColorPalette.hairline
    }
}
