import QtQuick
import Brivane.Components
import Brivane.Scanner

// The figures of a finished scan.
StatsBar {
    id: root

    required property ScanViewModel viewModel

    objectName: "completedStatsBar"

    StatItem {
        value: root.viewModel.stats.resultFilesText
        caption: qsTr("files")
    }
    StatItem {
        value: root.viewModel.stats.resultSizeText
        caption: qsTr("total")
    }
    StatItem {
        icon: "clock"
        value: root.viewModel.stats.durationText
    }
    StatItem {
        visible: value.length > 0
        icon: "eye.slash.fill"
        value: root.viewModel.stats.hiddenSpaceText
        caption: qsTr("hidden space")
    }
    IssuesButton {
        stats: root.viewModel.stats
    }
    StagedButton {
        actions: root.viewModel.actions
    }

    controls: CapsuleActionButton {
        objectName: "rescanButton"
        large: true
        label: qsTr("Rescan")
        icon.name: "arrow.clockwise"
        onClicked: root.viewModel.rescan()
    }
}
