import QtQuick
import Brivane.Components
import Brivane.Scanner

// How many entries could not be read; opens the list of them with the reasons.
HoverPillButton {
    id: root

    required property ScanStats stats

    objectName: "issuesButton"
    visible: stats.issueCount > 0
    color: ColorPalette.warning
    icon.name: "lock.fill"
    label: qsTr("%1 unreadable").arg(stats.issueCount)
    onClicked: popup.open()

    ListPopup {
        id: popup

        objectName: "issuesPopup"
        name: qsTr("Entries that could not be read")
        onAboutToShow: lines = root.stats.issueLines()
    }
}
