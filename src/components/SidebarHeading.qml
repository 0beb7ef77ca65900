import QtQuick
import Brivane.Components

// The heading of a part of the sidebar.
Item {
    id: root

    property alias text: label.text

    implicitHeight: 24

    AppText {
        id: label

        anchors.left: parent.left
        anchors.leftMargin: Metrics.spacingSmall
        anchors.bottom: parent.bottom
        anchors.bottomMargin: Metrics.spacingTiny
        textStyle: AppText.Style.Overline
        font.pixelSize: 10
        color: ColorPalette.faded(ColorPalette.secondaryText, 0.9)
        Accessible.role: Accessible.Heading
    }
}
