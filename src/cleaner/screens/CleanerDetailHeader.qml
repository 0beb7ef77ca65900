import QtQuick
import QtQuick.Layouts
import Brivane.Components
import Brivane.Cleaner

// What a category is, how much there is of it, and why it may go.
ColumnLayout {
    id: root

    required property CleanerDetailViewModel detail

    spacing: Metrics.spacingSmall

    RowLayout {
        Layout.fillWidth: true
        spacing: Metrics.spacingMedium

        IconTile {
            size: 44
            icon: root.detail.iconName
            tint: root.detail.tint
        }
        ColumnLayout {
            Layout.fillWidth: true
            spacing: 1

            AppText {
                objectName: "detailName"
                Layout.fillWidth: true
                text: root.detail.name
                textStyle: AppText.Style.Heading
                elide: Text.ElideRight
            }
            AppText {
                objectName: "detailFigures"
                Layout.fillWidth: true
                text: root.detail.totalSizeText + " · " + root.detail.itemCountText
                color: ColorPalette.secondaryText
                elide: Text.ElideRight
            }
        }
        CapsuleActionButton {
            objectName: "selectAll"
            enabled: root.detail.hasItems
            label: root.detail.selectAllLabel
            toolTip: root.detail.selectAllToolTip
            onClicked: root.detail.toggleAll()
        }
    }
    AppText {
        objectName: "detailDescription"
        Layout.fillWidth: true
        wrapMode: Text.Wrap
        text: root.detail.description
        color: ColorPalette.secondaryText
    }
    HoverPillButton {
        objectName: "learnMore"
        label: root.detail.showLearnMore ? qsTr("Hide Details") : qsTr("Why is this safe?")
        icon.name: root.detail.showLearnMore ? "chevron.up" : "checkmark.shield"
        checked: root.detail.showLearnMore
        onClicked: root.detail.showLearnMore = !root.detail.showLearnMore
    }
    ModuleCard {
        objectName: "explanation"
        Layout.fillWidth: true
        visible: root.detail.showLearnMore
        padding: Metrics.spacingMedium
        tint: root.detail.tint

        ColumnLayout {
            anchors.left: parent.left
            anchors.right: parent.right
            spacing: Metrics.spacingSmall

            AppText {
                Layout.fillWidth: true
                wrapMode: Text.Wrap
                text: root.detail.safetyExplanation
            }
            RowLayout {
                spacing: Metrics.spacingTiny + 2

                Symbol {
                    name: "info.circle.fill"
                    size: 15
                    color: ColorPalette.lightened(root.detail.tint, 0.2)
                }
                AppText {
                    Layout.fillWidth: true
                    wrapMode: Text.Wrap
                    text: qsTr("What happens after deletion?")
                    textStyle: AppText.Style.BodyStrong
                }
            }
            AppText {
                Layout.fillWidth: true
                wrapMode: Text.Wrap
                text: root.detail.regenerationInfo
                color: ColorPalette.secondaryText
            }
        }
    }
}
