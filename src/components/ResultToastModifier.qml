import QtQuick
import Brivane.Components

// What became of something, in a capsule at the bottom edge of the view that it lies over. It shows
// while there is a message, comes in from below and goes out there, and lets clicks through.
Item {
    id: root

    property string visibleMessage
    property string icon: "checkmark.circle.fill"
    property color tint: ColorPalette.green

    // How far it is in. The text stays for as long as it goes out.
    property real presence: 0
    property string lastMessage

    onVisibleMessageChanged: {
        if (visibleMessage.length === 0) {
            leaving.restart();
            return;
        }
        leaving.stop();
        lastMessage = visibleMessage;
        arrival.restart();
        ScreenReader.alert(toast);
    }

    anchors.fill: parent
    clip: true

    Spring {
        id: arrival

        target: root
        property: "presence"
        to: 1
        response: 0.4
        damping: 0.8
    }
    NumberAnimation {
        id: leaving

        target: root
        property: "presence"
        to: 0
        duration: Motion.milliseconds(400)
        easing.type: Easing.OutCubic
    }

    Rectangle {
        id: toast

        objectName: "resultToast"
        anchors.horizontalCenter: parent.horizontalCenter
        y: parent.height - root.presence * (height + Metrics.spacingHuge)
        width: Math.min(row.implicitWidth + 2 * Metrics.spacingLarge, parent.width - 2 * Metrics.spacingHuge)
        height: 40
        radius: height / 2
        visible: root.presence > 0
        opacity: Math.min(1, root.presence)
        color: ColorPalette.surfaceLight
        border.width: 1
        border.color: ColorPalette.hairlineStrong
        Accessible.role: Accessible.AlertMessage
        Accessible.name: root.lastMessage

        SoftShadow {
            z: -1
            radius: parent.radius
        }
        Row {
            id: row

            anchors.left: parent.left
            anchors.leftMargin: Metrics.spacingLarge
            anchors.verticalCenter: parent.verticalCenter
            spacing: Metrics.spacingSmall

            Symbol {
                id: symbol

                anchors.verticalCenter: parent.verticalCenter
                name: root.icon
                size: 18
                color: root.tint
            }
            AppText {
                objectName: "resultToastText"
                anchors.verticalCenter: parent.verticalCenter
                width: Math.min(implicitWidth, root.width - 2 * Metrics.spacingHuge - 2 * Metrics.spacingLarge
                    - symbol.width - Metrics.spacingSmall)
                text: root.lastMessage
                textStyle: AppText.Style.BodyStrong
                elide: Text.ElideMiddle
                Accessible.ignored: true
            }
        }
    }
}
