import QtQuick
import Brivane.Components
import Brivane.Scanner

// The figures of a finished scan.
BottomBar {
    id: root

    required property ScanViewModel viewModel

    objectName: "completedStatsBar"

    StatPill {
        isBare: true
        value: root.viewModel.stats.resultFilesText
        label: qsTr("files")
    }
    StatPill {
        isBare: true
        value: root.viewModel.stats.resultSizeText
        label: qsTr("total")
    }

    spare: [
        StatPill {
            isBare: true
            icon: "clock"
            value: root.viewModel.stats.durationText
            Accessible.name: qsTr("time: %1").arg(value)
        },
        StatPill {
            isBare: true
            visible: value.length > 0
            icon: "eye.slash.fill"
            value: root.viewModel.stats.hiddenSpaceText
            label: qsTr("hidden space")
        }
    ]

    notices: [
        IssuesButton {
            stats: root.viewModel.stats
        },
        StagedButton {
            actions: root.viewModel.actions
        }
    ]

    controls: CapsuleActionButton {
        objectName: "rescanButton"
        large: true
        label: qsTr("Rescan")
        icon.name: "arrow.clockwise"
        onClicked: root.viewModel.rescan()
    }
}
