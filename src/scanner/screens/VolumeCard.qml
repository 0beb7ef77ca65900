import QtQuick
import Brivane.Components

// A volume to choose: what it is, how full it is.
BaseButton {
    id: root

    required property string mountPoint
    required property string name
    required property string usageText
    required property double usedFraction
    required property string iconName
    required property bool isBoot
    property bool isSelected: false

    objectName: "volumeCard"
    text: name
    cornerRadius: Metrics.radiusLarge
    implicitHeight: 84
    leftPadding: Metrics.spacingLarge
    rightPadding: Metrics.spacingLarge
    Accessible.description: usageText

    background: ModuleCard {
        tint: root.isSelected || root.liveliness > 0 ? ColorPalette.accent : "white"
        emphasized: root.liveliness > 0
    }

    contentItem: Item {
        IconTile {
            id: tile

            anchors.left: parent.left
            anchors.verticalCenter: parent.verticalCenter
            icon: root.iconName
            size: 44
        }

        Column {
            anchors.left: tile.right
            anchors.leftMargin: Metrics.spacingLarge
            anchors.right: chevron.left
            anchors.rightMargin: Metrics.spacingLarge
            anchors.verticalCenter: parent.verticalCenter
            spacing: Metrics.spacingTiny + 2

            Row {
                spacing: Metrics.spacingSmall

                AppText {
                    id: nameText

                    width: Math.min(implicitWidth, 340)
                    elide: Text.ElideMiddle
                    text: root.name
                    textStyle: AppText.Style.Heading
                }
                Rectangle {
                    anchors.verticalCenter: nameText.verticalCenter
                    visible: root.isBoot
                    width: badge.implicitWidth + 2 * Metrics.spacingSmall - 2
                    height: 18
                    radius: height / 2
                    color: ColorPalette.faded(ColorPalette.accent, 0.16)

                    AppText {
                        id: badge

                        anchors.centerIn: parent
                        text: qsTr("Boot")
                        textStyle: AppText.Style.Caption
                        font.weight: Font.Medium
                        color: ColorPalette.lightened(ColorPalette.accent, 0.3)
                    }
                }
            }
            AppText {
                text: root.usageText
                textStyle: AppText.Style.Callout
            }
            UsageBar {
                width: parent.width
                fraction: root.usedFraction
            }
        }

        Symbol {
            id: chevron

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            name: "chevron.right"
            size: 18
            color: ColorPalette.subtleText
        }
    }
}
