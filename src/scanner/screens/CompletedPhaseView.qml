import QtQuick
import Brivane.Components
import Brivane.Scanner

// A finished scan, to be looked through.
FocusScope {
    id: root

    required property ScanViewModel viewModel

    property bool showSunburst: true

    objectName: "completedPhaseView"

    ScanToolbar {
        id: toolbar

        anchors.left: parent.left
        anchors.right: parent.right
        showsSunburst: root.showSunburst
        onChartChosen: isSunburst => root.showSunburst = isSunburst
        status: qsTr("Completed")
        statusColor: ColorPalette.success
        path: root.viewModel.stats.focusPath
        showsBack: true
        onBack: root.viewModel.showVolumes()
    }

    ScanPanes {
        anchors.top: toolbar.bottom
        anchors.bottom: bar.top
        anchors.left: parent.left
        anchors.right: parent.right
        focus: true
        viewModel: root.viewModel
        showsSunburst: root.showSunburst
    }

    CompletedStatsBar {
        id: bar

        anchors.bottom: parent.bottom
        anchors.left: parent.left
        anchors.right: parent.right
        viewModel: root.viewModel
    }
}
