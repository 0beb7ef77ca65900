import QtQuick
import QtQuick.Layouts
import Brivane.Components
import Brivane.Cleaner

// What became of a clean-up: figures, the disk, what was selected, and what stayed and why.
ConfirmOverlay {
    id: root

    required property CleanerViewModel viewModel
    readonly property CleanResultViewModel result: viewModel.result

    function said(stat: HeaderStat): string {
        return stat.value + " " + stat.caption;
    }

    objectName: "cleanerResult"
    implicitWidth: 540
    asked: viewModel.showResult
    icon: "checkmark.circle.fill"
    tint: ColorPalette.success
    title: qsTr("Cleanup Complete")
    spokenText: said(cleaned) + ", " + said(freed) + (failed.visible ? ", " + said(failed) : "")
    cancelLabel: qsTr("Done")
    cancelColor: ColorPalette.accent
    onDismissed: viewModel.dismissResult()

    Row {
        Layout.alignment: Qt.AlignHCenter
        Layout.bottomMargin: Metrics.spacingSmall
        spacing: 2 * Metrics.spacingHuge

        HeaderStat {
            id: cleaned

            objectName: "cleanedStat"
            Accessible.ignored: true // the dialog says it
            value: root.result?.cleanedText ?? ""
            caption: qsTr("Cleaned")
            tint: ColorPalette.green
        }
        HeaderStat {
            id: freed

            objectName: "freedStat"
            Accessible.ignored: true
            value: root.result?.freedText ?? ""
            caption: qsTr("Freed")
            tint: ColorPalette.cyan
        }
        HeaderStat {
            id: failed

            objectName: "failedStat"
            Accessible.ignored: true
            visible: value.length > 0
            value: root.result?.failedText ?? ""
            caption: qsTr("Failed")
            tint: ColorPalette.red
        }
    }
    NoteLine {
        objectName: "stoppedNote"
        Layout.fillWidth: true
        visible: text.length > 0
        icon: "stop.fill"
        text: root.result?.stoppedText ?? ""
        tint: ColorPalette.warning
    }
    NoteLine {
        objectName: "alongsideNote"
        Layout.fillWidth: true
        visible: text.length > 0
        icon: "info.circle.fill"
        text: root.result?.alongsideText ?? ""
    }
    CleanerFailures {
        Layout.fillWidth: true
        visible: (root.result?.failedText ?? "").length > 0
        viewModel: root.viewModel
        result: root.result
    }
    CleanerDiskSpace {
        Layout.fillWidth: true
        visible: root.result?.hasDiskSpace ?? false
        result: root.result
    }
    CleanerBreakdown {
        Layout.fillWidth: true
        visible: rows.length > 0
        rows: root.result?.breakdown ?? []
    }
    NoteLine {
        objectName: "quarantineNote"
        Layout.fillWidth: true
        visible: text.length > 0
        icon: "shield.lefthalf.filled"
        text: root.result?.quarantineText ?? ""
        tint: ColorPalette.success
    }
    NoteLine {
        objectName: "snapshotsNote"
        Layout.fillWidth: true
        visible: text.length > 0
        icon: "clock.fill"
        text: root.result?.snapshotsText ?? ""
    }
}
