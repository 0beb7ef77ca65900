import QtQuick
import QtQuick.Layouts
import Brivane.Components

// The bar below a scan: figures on the left, controls on the right.
Rectangle {
    id: root

    default property alias figures: figuresRow.data
    property alias controls: controlsRow.data

    implicitHeight: 52
    color: ColorPalette.surface

    Rectangle {
        width: parent.width
        height: 1
        color: ColorPalette.hairline
    }

    RowLayout {
        id: figuresRow

        anchors.left: parent.left
        anchors.leftMargin: Metrics.spacingHuge
        anchors.verticalCenter: parent.verticalCenter
        spacing: Metrics.spacingHuge
    }

    RowLayout {
        id: controlsRow

        anchors.right: parent.right
        anchors.rightMargin: Metrics.spacingHuge
        anchors.verticalCenter: parent.verticalCenter
        spacing: Metrics.spacingSmall
    }
}
