import QtQuick
import Brivane.Components

// Something is under way. Without motion it is an open ring.
ArcItem {
    id: root

    property real size: 14

    implicitWidth: size
    implicitHeight: size
    lineWidth: Math.max(1.5, size / 8)
    sweepAngle: 280
    tapered: true

    NumberAnimation on startAngle {
        running: root.visible && Motion.enabled
        loops: Animation.Infinite
        from: 0
        to: 360
        duration: 900
    }
}
