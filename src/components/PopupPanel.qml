import QtQuick
import Brivane.Components

// The ground of all that lies over a screen.
Rectangle {
    id: root

    property real blur: 12

    radius: Metrics.radiusMedium
    color: ColorPalette.surfaceLight
    border.width: 1
    border.color: ColorPalette.hairlineStrong

    SoftShadow {
        z: -1
        radius: root.radius
        blur: root.blur
    }
}
