import QtQuick
import Brivane.Components

// Over a scan: which chart is shown, and what the scan is doing.
Item {
    id: root

    property bool showsSunburst: true
    property bool isAdmin: false
    property string status
    property color statusColor: ColorPalette.secondaryText
    property string path
    property bool isBusy: false
    property bool showsBack: false

    signal back
    signal chartChosen(isSunburst: bool)

    implicitHeight: 48

    Row {
        id: state

        anchors.left: parent.left
        anchors.leftMargin: Metrics.spacingLarge
        anchors.verticalCenter: parent.verticalCenter
        spacing: Metrics.spacingMedium

        CapsuleActionButton {
            objectName: "showVolumes"
            anchors.verticalCenter: parent.verticalCenter
            visible: root.showsBack
            color: ColorPalette.secondaryText
            label: qsTr("Disks")
            icon.name: "chevron.left"
            onClicked: root.back()
        }

        SegmentedPills {
            objectName: "chartPicker"
            anchors.verticalCenter: parent.verticalCenter
            name: qsTr("Chart")
            options: [
                { value: true, label: qsTr("Sunburst"), icon: "circle.circle.fill", objectName: "sunburstToggle" },
                { value: false, label: qsTr("Treemap"), icon: "square.grid.2x2.fill", objectName: "treemapToggle" }
            ]
            selection: root.showsSunburst
            accent: ColorPalette.faded(ColorPalette.accent, 0.24)
            chosenTextColor: ColorPalette.lightened(ColorPalette.accent, 0.4)
            onActivated: isSunburst => root.chartChosen(isSunburst)
        }

        Badge {
            objectName: "adminBadge"
            anchors.verticalCenter: parent.verticalCenter
            visible: root.isAdmin
            text: qsTr("ADMIN")
            tint: ColorPalette.warning
        }

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
        anchors.rightMargin: Metrics.spacingLarge
        anchors.verticalCenter: parent.verticalCenter
        horizontalAlignment: Text.AlignRight
        elide: Text.ElideMiddle
        text: root.path
        textStyle: AppText.Style.Caption
        color: ColorPalette.secondaryText
        Accessible.ignored: root.isBusy // it would not stop talking
    }

    Rectangle {
        anchors.bottom: parent.bottom
        width: parent.width
        height: 1
        color: ColorPalette.hairline
    }
}
