import QtQuick
import Brivane.Components

// A volume in the sidebar. The selected one is what is scanned.
Item {
    id: root

    required property string mountPoint
    required property string name
    required property string freeText
    required property double usedFraction
    required property string iconName
    property bool isCurrent: false

    signal chosen

    implicitHeight: button.height + 2

    SidebarRow {
        id: button

        objectName: "volume-" + root.name
        width: parent.width
        implicitHeight: 38
        text: root.name
        isCurrent: root.isCurrent
        Accessible.description: qsTr("%1, %2 % used").arg(root.freeText).arg(Math.round(100 * root.usedFraction))
        onClicked: root.chosen()

        background: Rectangle {
            radius: Metrics.radiusSmall + 1
            color: ColorPalette.faded("white", root.isCurrent ? 0.07 : button.hovered ? 0.04 : 0)
            Behavior on color { ColorAnimation { duration: Motion.quick } }
        }

        Item {
            anchors.fill: parent
            anchors.leftMargin: Metrics.spacingSmall - 1
            anchors.rightMargin: Metrics.spacingSmall

            Symbol {
                id: symbol

                anchors.left: parent.left
                anchors.verticalCenter: nameText.verticalCenter
                name: root.iconName
                size: 16
                color: root.isCurrent ? ColorPalette.lightened(ColorPalette.accent, 0.2) : ColorPalette.secondaryText
            }
            AppText {
                id: nameText

                anchors.left: symbol.right
                anchors.leftMargin: Metrics.spacingSmall + 3
                anchors.right: free.left
                anchors.rightMargin: Metrics.spacingSmall
                y: 5
                text: root.name
                textStyle: AppText.Style.Callout
                elide: Text.ElideMiddle
                color: ColorPalette.primaryText
                Accessible.ignored: true
            }
            AppText {
                id: free

                anchors.right: parent.right
                anchors.baseline: nameText.baseline
                text: root.freeText
                textStyle: AppText.Style.Caption
                Accessible.ignored: true
            }
            UsageBar {
                anchors.left: nameText.left
                anchors.right: parent.right
                anchors.bottom: parent.bottom
                anchors.bottomMargin: 8
                thickness: 3
                Accessible.ignored: true
                fraction: root.usedFraction
            }
        }
    }
}
