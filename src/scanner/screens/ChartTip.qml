import QtQuick
import QtQuick.Templates as T
import Brivane.Components
import Brivane.Scanner

// Tells about the block under the pointer after a moment of its rest, or at once about the one that the
// keyboard has come to.
T.ToolTip {
    id: root

    required property ChartView chart

    readonly property rect bounds: chart.revision, chart.boundsOf(chart.hoveredIndex)

    objectName: "chartTip"
    parent: chart
    visible: chart.hoveredIndex >= 0 && chart.visible
    delay: chart.isKeyboardUsed ? 0 : 500
    x: Math.round(bounds.x + (bounds.width - width) / 2)
    y: Math.round(bounds.y + Math.min(bounds.height, bounds.height / 2 + 28))
    margins: Metrics.spacingSmall
    padding: Metrics.spacingSmall
    implicitWidth: Math.min(360, Math.ceil(implicitContentWidth)) + leftPadding + rightPadding
    implicitHeight: Math.ceil(implicitContentHeight) + topPadding + bottomPadding
    closePolicy: T.Popup.NoAutoClose

    contentItem: Column {
        spacing: 2

        AppText {
            width: Math.min(360, implicitWidth)
            text: root.chart.revision, root.chart.nameOf(root.chart.hoveredIndex)
            textStyle: AppText.Style.BodyStrong
            elide: Text.ElideMiddle
            Accessible.ignored: true // the block says it
        }
        AppText {
            width: Math.min(360, implicitWidth)
            text: root.chart.revision, root.chart.detailsOf(root.chart.hoveredIndex)
            textStyle: AppText.Style.Caption
            elide: Text.ElideRight
            Accessible.ignored: true
        }
    }
    background: Rectangle {
        color: ColorPalette.surfaceLight
        radius: Metrics.radiusSmall
        border.width: 1
        border.color: ColorPalette.hairlineStrong

        SoftShadow {
            z: -1
            radius: parent.radius
        }
    }
}
