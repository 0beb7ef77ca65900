import QtQuick
import QtQuick.Templates as T
import Brivane.Components

// How full something is, as a thin bar. Colour follows the fraction unless `color` is set.
T.ProgressBar {
    id: root

    property real fraction: 0
    property color color: ColorPalette.usageColor(fraction)
    property int thickness: 4

    value: Math.min(1, Math.max(0, fraction))
    implicitWidth: 120
    implicitHeight: thickness
    Accessible.role: Accessible.ProgressBar
    Accessible.name: qsTr("%1 % used").arg(Math.round(value * 100))

    background: Rectangle {
        radius: height / 2
        color: ColorPalette.faded("white", 0.08)
    }
    contentItem: Item {
        Rectangle {
            objectName: "fill"
            // A sliver of use stays visible as a dot.
            width: root.value > 0 ? Math.max(parent.height, parent.width * root.value) : 0
            height: parent.height
            radius: height / 2
            color: root.color
            Behavior on width { NumberAnimation { duration: Motion.slow; easing.type: Easing.OutCubic } }
        }
    }
}
