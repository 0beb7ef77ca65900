import QtQuick
import QtQuick.Layouts
import Brivane.Components
import Brivane.Cleaner

// What is about to be removed, which running programs that touches, and the two ways to do it.
ConfirmOverlay {
    id: root

    required property CleanerViewModel viewModel

    objectName: "cleanerConfirm"
    asked: viewModel.showCleanConfirmation
    icon: "sparkles"
    tint: ColorPalette.blue
    title: viewModel.confirmTitle
    text: viewModel.confirmText
    onDismissed: viewModel.showCleanConfirmation = false

    answers: [
        ConfirmAnswer {
            objectName: "moveToQuarantine"
            label: qsTr("Move to Quarantine")
            icon: "shield.lefthalf.filled"
            style: ConfirmAnswer.Style.Prominent
            onChosen: root.viewModel.moveToQuarantine()
        },
        ConfirmAnswer {
            objectName: "deletePermanently"
            label: qsTr("Delete Permanently")
            icon: "trash.fill"
            style: ConfirmAnswer.Style.Destructive
            onChosen: root.viewModel.deletePermanently()
        }
    ]

    NoteLine {
        id: warning

        objectName: "runningWarning"
        onVisibleChanged: if (visible) ScreenReader.alert(warning) // it comes after the question
        Layout.fillWidth: true
        visible: text.length > 0
        icon: "exclamationmark.triangle.fill"
        text: root.viewModel.runningWarning
        tint: ColorPalette.warning
        isWarning: true
    }
    NoteLine {
        Layout.fillWidth: true
        icon: "lightbulb.fill"
        text: qsTr("Tip: make sure you have a current Time Machine backup first")
    }
    NoteLine {
        objectName: "restoreNote"
        Layout.fillWidth: true
        icon: "shield.lefthalf.filled.badge.checkmark"
        text: root.viewModel.restoreText
        tint: ColorPalette.success
    }
}
