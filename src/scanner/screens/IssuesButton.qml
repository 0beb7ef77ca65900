import QtQuick
import QtQuick.Templates as T
import Brivane.Components
import Brivane.Scanner

// How many entries could not be read; opens the list of them with the reasons.
HoverPillButton {
    id: root

    required property ScanStats stats

    objectName: "issuesButton"
    visible: stats.issueCount > 0
    color: ColorPalette.warning
    label: qsTr("%1 unreadable").arg(stats.issueCount)
    onClicked: popup.open()

    T.Popup {
        id: popup

        property list<string> lines

        objectName: "issuesPopup"
        y: -height - Metrics.spacingSmall
        width: 560
        height: Math.min(360, lines.length * 24 + 2 * Metrics.spacingMedium)
        padding: Metrics.spacingMedium
        focus: true
        closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutside
        onAboutToShow: lines = root.stats.issueLines()

        background: Rectangle {
            radius: Metrics.radiusMedium
            color: ColorPalette.surfaceLight
            border.color: ColorPalette.hairlineStrong
        }
        contentItem: IssueList {
            lines: popup.lines
        }
    }
}
