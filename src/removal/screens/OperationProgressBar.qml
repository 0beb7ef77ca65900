import QtQuick
import QtQuick.Layouts
import Brivane.Components
import Brivane.Core

// How far a bulk operation has come: what it does, how many are done, how much that was, and a bar.
Item {
    id: root

    property string label
    property int completed: 0
    property int total: 0
    property double bytesProcessed: 0
    property color tint: ColorPalette.blue

    readonly property double fraction: total < 1 ? 0 : completed / total
    readonly property string text: "%1 %2 of %3…".arg(label).arg(completed).arg(total)

    implicitHeight: line.implicitHeight + Metrics.spacingSmall + bar.height
    Accessible.role: Accessible.ProgressBar
    Accessible.name: text

    RowLayout {
        id: line

        width: parent.width
        spacing: Metrics.spacingSmall

        BusySpinner {
            size: 13
            color: root.tint
        }
        AppText {
            objectName: "operationProgressText"
            Layout.fillWidth: true
            text: root.text
            textStyle: AppText.Style.BodyStrong
            elide: Text.ElideRight
            Accessible.ignored: true
        }
        NumericText {
            text: ByteCountFormatter.string(root.bytesProcessed)
            color: ColorPalette.secondaryText
            pixelSize: Metrics.textCallout
            weight: Font.Medium
        }
    }
    Rectangle {
        id: bar

        anchors.bottom: parent.bottom
        width: parent.width
        height: 4
        radius: 2
        color: ColorPalette.faded("white", 0.08)

        Rectangle {
            objectName: "operationProgressFill"
            width: Math.max(4, parent.width * root.fraction)
            height: parent.height
            radius: parent.radius
            color: root.tint
            Behavior on width { NumberAnimation { duration: Motion.standard; easing.type: Easing.OutCubic } }
        }
    }
}
