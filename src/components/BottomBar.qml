import QtQuick
import QtQuick.Layouts
import Brivane.Components

// The bar below a screen: figures and notices on the left, controls on the right. Figures that one can do
// without are spare: they go where there is no room for all.
Rectangle {
    id: root

    default property alias figures: figuresRow.data
    property alias spare: spareRow.data
    property alias notices: noticesRow.data
    property alias controls: controlsRow.data

    readonly property bool isTight: figuresRow.implicitWidth + spareRow.implicitWidth + noticesRow.implicitWidth
        + controlsRow.implicitWidth + 5 * Metrics.spacingHuge > width

    implicitHeight: 52
    color: ColorPalette.surface

    Rectangle {
        width: parent.width
        height: 1
        color: ColorPalette.hairline
    }

    Row {
        anchors.left: parent.left
        anchors.leftMargin: Metrics.spacingHuge
        anchors.verticalCenter: parent.verticalCenter
        spacing: Metrics.spacingHuge

        RowLayout {
            id: figuresRow

            anchors.verticalCenter: parent.verticalCenter
            spacing: Metrics.spacingHuge
        }
        RowLayout {
            id: spareRow

            anchors.verticalCenter: parent.verticalCenter
            visible: !root.isTight
            spacing: Metrics.spacingHuge
        }
        RowLayout {
            id: noticesRow

            anchors.verticalCenter: parent.verticalCenter
            spacing: Metrics.spacingHuge
        }
    }

    RowLayout {
        id: controlsRow

        anchors.right: parent.right
        anchors.rightMargin: Metrics.spacingHuge
        anchors.verticalCenter: parent.verticalCenter
        spacing: Metrics.spacingSmall
    }
}
