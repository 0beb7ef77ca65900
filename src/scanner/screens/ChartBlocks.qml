import QtQuick
import Brivane.Components
import Brivane.Scanner

// The blocks of a chart for those who do not see them: each an item with a name, at its place.
Repeater {
    id: root

    required property ChartView chart

    // Where the keyboard is in the chart, and on what: a screen reader is told when it moves.
    readonly property int keyboardIndex: chart.isKeyboardUsed && chart.activeFocus ? chart.hoveredIndex : -1
    readonly property string keyboardPlace: chart.revision,
        keyboardIndex < 0 ? "" : keyboardIndex + chart.nameOf(keyboardIndex)

    onKeyboardPlaceChanged: {
        if (keyboardIndex >= 0)
            ScreenReader.focusMoved(itemAt(keyboardIndex));
    }

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
        Accessible.focused: root.keyboardIndex === index
        Accessible.onPressAction: root.chart.activate(index)
    }
}
