import QtQuick
import Brivane.Components
import Brivane.Scanner

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

        Rectangle {
            anchors.verticalCenter: parent.verticalCenter
            width: charts.width + 4
            height: Metrics.controlHeight
            radius: height / 2
            color: ColorPalette.faded("white", 0.04)
            border.width: 1
            border.color: ColorPalette.hairline
            Accessible.role: Accessible.Grouping
            Accessible.name: qsTr("Chart")

            Row {
                id: charts

                anchors.centerIn: parent
                spacing: 2

                ChartToggleButton {
                    objectName: "sunburstToggle"
                    icon.name: "circle.circle.fill"
                    label: qsTr("Sunburst")
                    isActive: root.showsSunburst
                    onClicked: root.chartChosen(true)
                }
                ChartToggleButton {
                    objectName: "treemapToggle"
                    icon.name: "square.grid.2x2.fill"
                    label: qsTr("Treemap")
                    isActive: !root.showsSunburst
                    onClicked: root.chartChosen(false)
                }
            }
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
        Accessible.ignored: true
    }

    Rectangle {
        anchors.bottom: parent.bottom
        width: parent.width
        height: 1
        color: ColorPalette.hairline
    }
}
