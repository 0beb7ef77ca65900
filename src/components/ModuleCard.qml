import QtQuick
import QtQuick.Templates as T
import Brivane.Components

// A rounded card around its one child. The tint colours border and fill, more strongly when emphasized.
T.Pane {
    id: root

    property color tint: "white"
    property bool emphasized: false
    property real cornerRadius: Metrics.radiusLarge

    padding: Metrics.spacingLarge
    implicitWidth: contentWidth + leftPadding + rightPadding
    implicitHeight: contentHeight + topPadding + bottomPadding

    background: Rectangle {
        radius: root.cornerRadius
        color: Qt.tint(ColorPalette.cardBackground, ColorPalette.faded(root.tint, root.emphasized ? 0.1 : 0.015))
        border.width: 1
        border.color: ColorPalette.faded(root.tint, root.emphasized ? 0.38 : 0.07)
        Behavior on color { ColorAnimation { duration: Motion.standard } }
        Behavior on border.color { ColorAnimation { duration: Motion.standard } }
    }
}
