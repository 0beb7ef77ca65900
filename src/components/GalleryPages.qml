import QtQuick
import QtQuick.Layouts
import Brivane.Components

// Empty pages, and what lies over screens.
GallerySection {
    id: root

    property int asked: 0

    title: qsTr("Pages and popups")

    EmptyPage {
        Layout.fillWidth: true
        icon: "trash.fill"
        tint: ColorPalette.indigo
        title: qsTr("Nothing Looked At Yet")
        text: qsTr("Look for what programs make again by themselves.")
        footer: qsTr("Places: Caches · Logs · Downloads")
        buttonLabel: qsTr("Scan")
        buttonIcon: "magnifyingglass"
    }
    Flow {
        Layout.fillWidth: true
        spacing: Metrics.spacingSmall

        HoverPillButton { objectName: "askOne"; label: qsTr("Ask"); onClicked: root.asked = 1 }
        HoverPillButton { objectName: "askTwo"; label: qsTr("Ask in three ways"); onClicked: root.asked = 2 }
        HoverPillButton {
            objectName: "openMenu"
            label: qsTr("Menu")
            onClicked: menu.popup(this, 0, height)

            AppMenu {
                id: menu

                AppMenuItem { text: qsTr("Reveal"); icon.name: "folder" }
                AppMenuItem { text: qsTr("Copy Path"); icon.name: "doc.on.clipboard.fill"; keys: qsTr("Ctrl+C") }
            }
        }
        HoverPillButton {
            objectName: "openLines"
            label: qsTr("Lines")
            onClicked: lines.open()

            ListPopup {
                id: lines

                name: qsTr("Lines")
                lines: ["/Library/Sealed", "/private/var/db"]
                actionLabel: qsTr("Try Again")
                actionIcon: "arrow.clockwise"
            }
        }
    }

    BottomBar {
        Layout.fillWidth: true

        StatPill { isBare: true; value: qsTr("3.8 GB"); label: qsTr("Selected") }
        spare: StatPill { isBare: true; value: qsTr("12.4 GB"); label: qsTr("Total") }
        controls: CapsuleActionButton { large: true; label: qsTr("Remove"); icon.name: "trash.fill"; color: ColorPalette.danger }
    }

    ConfirmOverlay {
        asked: root.asked === 1
        icon: "arrow.uturn.backward.circle.fill"
        tint: ColorPalette.blue
        title: qsTr("Restore All Files?")
        text: qsTr("8 items go back to where they were.")
        answers: ConfirmAnswer { label: qsTr("Restore All"); style: ConfirmAnswer.Style.Prominent }
        onDismissed: root.asked = 0
    }
    ConfirmOverlay {
        asked: root.asked === 2
        icon: "trash.fill"
        tint: ColorPalette.indigo
        title: qsTr("Clean 3 Items")
        text: qsTr("3.8 GB will be freed")
        answers: [
            ConfirmAnswer {
                label: qsTr("Move to Quarantine")
                icon: "shield.lefthalf.filled"
                style: ConfirmAnswer.Style.Prominent
            },
            ConfirmAnswer {
                label: qsTr("Delete Permanently")
                icon: "trash.fill"
                style: ConfirmAnswer.Style.Destructive
            }
        ]
        onDismissed: root.asked = 0

        NoteLine {
            Layout.fillWidth: true
            icon: "exclamationmark.triangle.fill"
            text: qsTr("Some of it belongs to a running program.")
            tint: ColorPalette.warning
            isWarning: true
        }
        NoteLine {
            Layout.fillWidth: true
            icon: "lightbulb.fill"
            text: qsTr("There is a way back for a while.")
        }
    }
}
