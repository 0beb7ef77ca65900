import QtQuick
import Brivane.Components

// A scan in progress: its symbol in pulsing, turning rings, over what it does.
Item {
    id: root

    property string icon: "magnifyingglass"
    property string status
    property string caption
    property color accent: ColorPalette.accent

    // 0 to 1 through one pulse; without motion the rings stand still on their way.
    property real phase
    readonly property real shownPhase: Motion.enabled ? phase : 0.45
    readonly property real ringScale: 1.2 + 0.6 * shownPhase
    readonly property real ringOpacity: 0.5 * (1 - shownPhase)
    property real ringRotation

    implicitWidth: Math.max(rings.width, texts.width)
    implicitHeight: rings.height + Metrics.spacingMedium + texts.height
    Accessible.role: Accessible.StatusBar
    Accessible.name: status
    Accessible.description: caption

    NumberAnimation on phase {
        running: root.visible && Motion.enabled
        loops: Animation.Infinite
        from: 0
        to: 1
        duration: 2000
        easing.type: Easing.OutQuad
    }
    NumberAnimation on ringRotation {
        running: root.visible && Motion.enabled
        loops: Animation.Infinite
        from: 0
        to: 360
        duration: 2400
    }

    Item {
        id: rings

        readonly property real core: 80

        width: 144
        height: 144
        anchors.horizontalCenter: parent.horizontalCenter

        Rectangle {
            anchors.centerIn: parent
            width: rings.core * root.ringScale
            height: width
            radius: width / 2
            color: ColorPalette.faded(root.accent, 0.14 * root.ringOpacity)
            border.width: 1.5
            border.color: ColorPalette.faded(root.accent, root.ringOpacity)
        }
        ArcItem {
            anchors.centerIn: parent
            width: rings.core + 24
            height: width
            lineWidth: 2
            startAngle: root.ringRotation
            sweepAngle: 250
            tapered: true
            color: root.accent
        }
        ArcItem {
            anchors.centerIn: parent
            width: rings.core + 10
            height: width
            lineWidth: 1.5
            startAngle: 120 - root.ringRotation
            sweepAngle: 130
            tapered: true
            color: ColorPalette.faded(root.accent, 0.6)
        }
        Rectangle {
            anchors.centerIn: parent
            width: rings.core - 8
            height: width
            radius: width / 2
            color: ColorPalette.faded(root.accent, 0.14)
        }
        Symbol {
            anchors.centerIn: parent
            name: root.icon
            size: 32
            color: ColorPalette.lightened(root.accent, 0.2)
        }
    }

    Column {
        id: texts

        anchors.horizontalCenter: parent.horizontalCenter
        anchors.top: rings.bottom
        anchors.topMargin: Metrics.spacingMedium
        spacing: Metrics.spacingTiny

        AppText {
            anchors.horizontalCenter: parent.horizontalCenter
            text: root.status
            textStyle: AppText.Style.Heading
            Accessible.ignored: true
        }
        AppText {
            anchors.horizontalCenter: parent.horizontalCenter
            visible: text.length > 0
            text: root.caption
            textStyle: AppText.Style.Callout
            Accessible.ignored: true
        }
    }
}
