import QtQuick
import Brivane.Components
import Brivane.Scanner

// A finished scan, to be looked through.
FocusScope {
    id: root

    required property ScanViewModel viewModel

    objectName: "completedPhaseView"

    ScanToolbar {
        id: toolbar

        anchors.left: parent.left
        anchors.right: parent.right
        status: qsTr("Completed")
        statusColor: ColorPalette.success
        path: root.viewModel.selectedMountPoint
        showsBack: true
        onBack: root.viewModel.showVolumes()
    }

    LiveFolderTree {
        anchors.top: toolbar.bottom
        anchors.bottom: bar.top
        anchors.left: parent.left
        anchors.right: parent.right
        focus: true
        viewModel: root.viewModel
    }

    CompletedStatsBar {
        id: bar

        anchors.bottom: parent.bottom
        anchors.left: parent.left
        anchors.right: parent.right
        viewModel: root.viewModel
    }
}
