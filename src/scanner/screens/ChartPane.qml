import QtQuick
import Brivane.Components

// The place of the two charts of the focused folder.
Item {
    id: root

    required property bool showsSunburst

    objectName: "chartPane"

    Column {
        anchors.centerIn: parent
        spacing: Metrics.spacingMedium

        Symbol {
            anchors.horizontalCenter: parent.horizontalCenter
            name: root.showsSunburst ? "circle.circle.fill" : "square.grid.2x2.fill"
            size: 96
            color: ColorPalette.faded("white", 0.06)
        }
        AppText {
            anchors.horizontalCenter: parent.horizontalCenter
            text: root.showsSunburst ? qsTr("The sunburst is not part of this version yet.")
                : qsTr("The treemap is not part of this version yet.")
            textStyle: AppText.Style.Callout
        }
    }
}
