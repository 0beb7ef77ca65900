import QtQuick
import QtQuick.Layouts
import Brivane.Components

// How far something has come: what it does, a figure, a bar, and a button that stops it where that can be.
// A fraction below 0 is not known.
Item {
    id: root

    property string text
    property string detail
    property real fraction: -1
    property color tint: ColorPalette.blue
    property bool canStop: false
    property bool isStopping: false // the button stays where it is, to no effect
    property string stopLabel: qsTr("Stop")

    signal stopped()

    implicitWidth: 320
    implicitHeight: layout.implicitHeight
    Accessible.role: Accessible.ProgressBar
    Accessible.name: text
    Accessible.description: detail

    ColumnLayout {
        id: layout

        width: parent.width
        spacing: Metrics.spacingSmall

        RowLayout {
            spacing: Metrics.spacingSmall

            BusySpinner {
                size: 13
                color: root.tint
            }
            AppText {
                objectName: "progressText"
                Layout.fillWidth: true
                text: root.text
                textStyle: AppText.Style.BodyStrong
                elide: Text.ElideRight
                Accessible.ignored: true
            }
            NumericText {
                text: root.detail
                color: ColorPalette.secondaryText
                pixelSize: Metrics.textCallout
                weight: Font.Medium
                Accessible.ignored: true
            }
            CapsuleActionButton {
                objectName: "stopProgress"
                visible: root.canStop
                enabled: !root.isStopping
                label: root.stopLabel
                icon.name: "stop.fill"
                color: ColorPalette.danger
                onClicked: root.stopped()
            }
        }
        Rectangle {
            Layout.fillWidth: true
            implicitHeight: 4
            radius: 2
            visible: root.fraction >= 0
            color: ColorPalette.faded("white", 0.08)

            Rectangle {
                objectName: "progressFill"
                width: Math.max(4, parent.width * Math.min(1, root.fraction))
                height: parent.height
                radius: parent.radius
                color: root.tint
                Behavior on width { NumberAnimation { duration: Motion.standard; easing.type: Easing.OutCubic } }
            }
        }
    }
}
