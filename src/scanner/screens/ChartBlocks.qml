import QtQuick
import Brivane.Scanner

// The blocks of a chart for those who do not see them: each an item with a name, at its place.
Repeater {
    id: root

    required property ChartView chart

    model: chart.count

    Item {
        required property int index

        readonly property rect bounds: root.chart.revision, root.chart.boundsOf(index)

        x: bounds.x
        y: bounds.y
        width: bounds.width
        height: bounds.height
        Accessible.role: Accessible.ListItem
        Accessible.name: root.chart.revision, qsTr("%1, %2").arg(root.chart.nameOf(index)).arg(root.chart.detailsOf(index))
        Accessible.focused: root.chart.hoveredIndex === index
        Accessible.onPressAction: root.chart.activate(index)
    }
}
