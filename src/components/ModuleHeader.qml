import QtQuick
import QtQuick.Layouts
import Brivane.Components

// The head of a module's screen: title over subtitle, what the screen adds (its children), and the
// button that scans, which is there when it has a label.
Item {
    id: root

    property string title
    property string subtitle
    property string scanLabel
    property string scanIcon: "arrow.clockwise"
    property bool isScanning: false
    property color accent: ColorPalette.accent
    default property alias accessory: accessoryRow.data

    signal scan()

    implicitWidth: layout.implicitWidth
    implicitHeight: layout.implicitHeight

    RowLayout {
        id: layout

        anchors.fill: parent
        spacing: Metrics.spacingLarge

        ColumnLayout {
            Layout.fillWidth: true
            spacing: Metrics.spacingTiny

            AppText {
                Layout.fillWidth: true
                text: root.title
                textStyle: AppText.Style.Title
                elide: Text.ElideRight
            }
            AppText {
                Layout.fillWidth: true
                visible: text.length > 0
                text: root.subtitle
                color: ColorPalette.secondaryText
                wrapMode: Text.Wrap
                maximumLineCount: 2
                elide: Text.ElideRight
            }
        }

        RowLayout {
            id: accessoryRow
            spacing: Metrics.spacingHuge
        }

        CapsuleActionButton {
            objectName: "moduleHeaderScanButton"
            visible: root.scanLabel.length > 0
            large: true
            label: root.scanLabel
            icon.name: root.scanIcon
            color: root.accent
            isBusy: root.isScanning
            onClicked: root.scan()
        }
    }
}
