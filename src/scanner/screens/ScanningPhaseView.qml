import QtQuick
import Brivane.Components
import Brivane.Scanner

// A scan under way: the tree as far as it has grown, and the controls of the walk.
FocusScope {
    id: root

    required property ScanViewModel viewModel

    property bool liveSunburst: true

    objectName: "scanningPhaseView"

    ScanningPulseView {
        objectName: "initializing"
        anchors.centerIn: parent
        visible: !root.viewModel.hasTree
        icon: "magnifyingglass"
        status: qsTr("Initializing scan...")
    }

    ScanToolbar {
        id: toolbar

        anchors.left: parent.left
        anchors.right: parent.right
        visible: root.viewModel.hasTree
        showsSunburst: root.liveSunburst
        onChartChosen: isSunburst => root.liveSunburst = isSunburst
        isAdmin: root.viewModel.scanState === ScanViewModel.ScanningAdmin
        status: root.viewModel.isPaused ? qsTr("Paused") : qsTr("Scanning...")
        statusColor: root.viewModel.isPaused ? ColorPalette.warning : ColorPalette.secondaryText
        path: root.viewModel.stats.currentPath
        isBusy: !root.viewModel.isPaused
    }

    Loader {
        objectName: "scanPanes"
        anchors.top: toolbar.bottom
        anchors.bottom: bar.top
        anchors.left: parent.left
        anchors.right: parent.right
        active: root.viewModel.hasTree
        focus: true
        Accessible.role: Accessible.Grouping
        Accessible.name: qsTr("Scan") // until there is a list, it has the keyboard
        sourceComponent: ScanPanes {
            focus: true
            viewModel: root.viewModel
            showsSunburst: root.liveSunburst
        }
    }

    LiveStatsBar {
        id: bar

        anchors.bottom: parent.bottom
        anchors.left: parent.left
        anchors.right: parent.right
        viewModel: root.viewModel
    }
}
