import QtQuick
import QtQuick.Layouts
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
    Accessible.description: isBoot ? qsTr("Boot") + ", " + usageText : usageText
    Accessible.selectable: true
    Accessible.selected: isSelected

    background: ModuleCard {
        tint: root.isSelected || root.liveliness > 0 ? ColorPalette.accent : "white"
        emphasized: root.liveliness > 0
    }

    contentItem: RowLayout {
        spacing: Metrics.spacingLarge

        IconTile {
            icon: root.iconName
            size: 44
        }

        ColumnLayout {
            Layout.fillWidth: true
            spacing: Metrics.spacingTiny + 2

            RowLayout {
                spacing: Metrics.spacingSmall

                AppText {
                    Layout.maximumWidth: 340
                    elide: Text.ElideMiddle
                    text: root.name
                    textStyle: AppText.Style.Heading
                    Accessible.ignored: true
                }
                Badge {
                    visible: root.isBoot
                    text: qsTr("Boot")
                    isDecoration: true
                }
            }
            AppText {
                text: root.usageText
                textStyle: AppText.Style.Callout
                Accessible.ignored: true
            }
            UsageBar {
                Layout.fillWidth: true
                fraction: root.usedFraction
                Accessible.ignored: true
            }
        }

        Symbol {
            name: "chevron.right"
            size: 18
            color: ColorPalette.subtleText
        }
    }
}
