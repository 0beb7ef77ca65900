import QtQuick
import Brivane.Components
import Brivane.Scanner

// The figures of a scan under way, and the two controls of the walk.
BottomBar {
    id: root

    required property ScanViewModel viewModel

    objectName: "liveStatsBar"

    StatPill {
        isBare: true
        value: root.viewModel.stats.filesText
        label: qsTr("files")
    }
    StatPill {
        isBare: true
        value: root.viewModel.stats.bytesText
        label: qsTr("scanned")
    }

    spare: StatPill {
        isBare: true
        value: root.viewModel.stats.rateText
    }

    notices: [
        IssuesButton {
            stats: root.viewModel.stats
        },
        StagedButton {
            actions: root.viewModel.actions
        }
    ]

    controls: [
        CapsuleActionButton {
            objectName: "pauseButton"
            large: true
            label: root.viewModel.isPaused ? qsTr("Resume") : qsTr("Pause")
            icon.name: root.viewModel.isPaused ? "play.fill" : "pause.fill"
            onClicked: root.viewModel.togglePause()
        },
        CapsuleActionButton {
            objectName: "stopButton"
            large: true
            color: ColorPalette.danger
            label: qsTr("Stop")
            icon.name: "stop.fill"
            onClicked: root.viewModel.stopScan()
        }
    ]
}
