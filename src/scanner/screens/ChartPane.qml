import QtQuick
import Brivane.Components
import Brivane.Scanner

// One of the two charts of the focused folder.
FocusScope {
    id: root

    required property ScanViewModel viewModel
    required property bool showsSunburst

    function openMenu(chart: ChartView, node: fileNode, x: real, y: real): void {
        const isByKeyboard = chart.isKeyboardUsed; // which the menu takes
        menu.openFor(node, chart, x, y);
        if (isByKeyboard)
            menu.chooseFirst();
    }

    objectName: "chartPane"

    Loader {
        id: chart

        anchors.fill: parent
        anchors.margins: Metrics.spacingSmall
        focus: true
        sourceComponent: root.showsSunburst ? sunburst : treemap
        onLoaded: arrival.restart()
    }

    Spring {
        id: arrival

        target: chart
        property: "opacity"
        from: 0
        to: 1
        response: 0.3
        damping: 0.8
    }

    Component {
        id: sunburst

        SunburstChart {
            id: ring

            objectName: "sunburstChart"
            focus: true
            viewModel: root.viewModel
            onMenuRequested: (node, x, y) => root.openMenu(ring, node, x, y)
            Accessible.role: Accessible.Chart
            Accessible.name: qsTr("Sunburst of %1").arg(root.viewModel.stats.focusName)

            ChartBlocks { chart: ring }
            SunburstCentre {
                anchors.centerIn: parent
                radius: ring.innerRadius
                viewModel: root.viewModel
            }
            AppText {
                objectName: "leftOutNote"
                anchors.bottom: parent.bottom
                anchors.bottomMargin: Metrics.spacingSmall
                anchors.horizontalCenter: parent.horizontalCenter
                visible: ring.leftOutCount > 0
                text: qsTr("The %L1 largest of %L2").arg(ring.count).arg(ring.count + ring.leftOutCount)
                textStyle: AppText.Style.Caption
            }
            ChartTip { chart: ring }
        }
    }

    Component {
        id: treemap

        TreemapView {
            id: blocks

            objectName: "treemapView"
            focus: true
            viewModel: root.viewModel
            onMenuRequested: (node, x, y) => root.openMenu(blocks, node, x, y)
            Accessible.role: Accessible.Chart
            Accessible.name: qsTr("Treemap of %1").arg(root.viewModel.stats.focusName)

            ChartBlocks { chart: blocks }
            ChartTip { chart: blocks }
        }
    }

    RowMenu {
        id: menu

        actions: root.viewModel.actions
    }
}
