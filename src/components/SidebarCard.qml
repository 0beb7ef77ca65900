import QtQuick
import Brivane.Components

// Figures with their names, a line each, below a heading; one stop of the sidebar's Up and Down.
SidebarRow {
    id: root

    property var lines: [] // of { icon, label, value }; icon may be missing

    implicitHeight: column.height + 2 * Metrics.spacingSmall
    // A single line says what the heading says.
    Accessible.name: (lines.length > 1 ? text + ", " : "")
        + lines.map(line => qsTr("%1: %2").arg(line.label).arg(line.value)).join(", ")
    Accessible.selectable: false

    background: Rectangle {
        radius: Metrics.radiusSmall + 1
        color: ColorPalette.cardBackground
        border.width: 1
        border.color: ColorPalette.hairline
    }

    Column {
        id: column

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.leftMargin: Metrics.spacingSmall
        anchors.rightMargin: Metrics.spacingSmall
        anchors.verticalCenter: parent.verticalCenter
        spacing: Metrics.spacingTiny

        Repeater {
            model: root.lines

            Item {
                id: line

                required property var modelData

                width: column.width
                height: 18

                Symbol {
                    id: symbol

                    anchors.verticalCenter: parent.verticalCenter
                    visible: name.length > 0
                    name: line.modelData.icon ?? ""
                    size: 15
                    color: ColorPalette.secondaryText
                }
                AppText {
                    anchors.left: parent.left
                    anchors.leftMargin: symbol.visible ? symbol.width + Metrics.spacingSmall : 0
                    anchors.verticalCenter: parent.verticalCenter
                    text: line.modelData.label
                    textStyle: AppText.Style.Callout
                    Accessible.ignored: true
                }
                AppText {
                    anchors.right: parent.right
                    anchors.verticalCenter: parent.verticalCenter
                    text: line.modelData.value
                    textStyle: AppText.Style.Callout
                    font.weight: Font.Medium
                    color: ColorPalette.primaryText
                    Accessible.ignored: true
                }
            }
        }
    }
}
