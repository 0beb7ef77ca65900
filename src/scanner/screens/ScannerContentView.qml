import QtQuick
import QtQuick.Dialogs
import Brivane.Scanner

// The scanner's module: the screen that belongs to the state of the scan.
FocusScope {
    id: root

    required property ScanViewModel viewModel

    objectName: "scannerContentView"

    Loader {
        anchors.fill: parent
        focus: true
        sourceComponent: {
            switch (root.viewModel.scanState) {
            case ScanViewModel.Scanning:
            case ScanViewModel.ScanningAdmin:
                return scanning;
            case ScanViewModel.Completed:
                return completed;
            case ScanViewModel.Error:
                return failed;
            default:
                return picker;
            }
        }
    }

    Component {
        id: picker

        VolumePickerView {
            focus: true
            viewModel: root.viewModel
            onFolderRequested: folderDialog.open()
        }
    }

    Component {
        id: scanning

        ScanningPhaseView {
            focus: true
            viewModel: root.viewModel
        }
    }

    Component {
        id: completed

        CompletedPhaseView {
            focus: true
            viewModel: root.viewModel
        }
    }

    Component {
        id: failed

        ScanErrorView {
            focus: true
            message: root.viewModel.errorMessage
            onRetry: root.viewModel.rescan()
            onBack: root.viewModel.showVolumes()
        }
    }

    FolderDialog {
        id: folderDialog

        title: qsTr("Choose a folder to scan")
        onAccepted: root.viewModel.scanFolderUrl(selectedFolder)
    }
}
