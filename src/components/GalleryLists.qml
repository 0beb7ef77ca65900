import QtQuick
import QtQuick.Layouts
import Brivane.Components

// A list with sections, rows of every kind, and its menu.
GallerySection {
    id: root

    property var ticked: ["log"]

    function toggle(key: string): void {
        ticked = ticked.includes(key) ? ticked.filter(other => other !== key) : ticked.concat(key);
    }

    title: qsTr("Lists")

    component FileRow: KeyboardListRow {
        id: row

        required property string key
        required property string name
        required property string path
        required property string size
        required property string symbol

        width: ListView.view.width - Metrics.spacingMedium
        objectName: "row-" + key
        entry: key
        menu: rowMenu
        title: name
        hasStrongTitle: true
        kind: key === "log" ? qsTr("Logs") : ""
        subtitle: path
        trailingText: size
        hasCheckBox: true
        isCheckBoxApart: key === "image"
        hasRoundCheckBox: isCheckBoxApart
        checkState: root.ticked.includes(key) ? Qt.Checked : Qt.Unchecked
        onTicked: entry => root.toggle(entry)
        onActivated: entry => root.toggle(entry)

        leading: IconTile {
            icon: row.symbol
            size: 32
        }
        badges: Badge {
            visible: row.key === "film"
            text: qsTr("Review")
            icon: "exclamationmark.circle.fill"
            tint: ColorPalette.warning
            toolTip: qsTr("Look at it before it goes")
        }
        trailing: RowButton {
            entry: row.entry
            opacity: row.isLit ? 1 : 0
            icon.name: "trash"
            color: ColorPalette.danger
            toolTip: qsTr("Delete")
            onChosen: entry => root.toggle(entry)
        }
    }

    KeyboardList {
        id: list

        objectName: "galleryList"
        Layout.fillWidth: true
        Layout.preferredHeight: 250
        name: qsTr("Files")
        spacing: 2
        section.property: "section"
        section.delegate: ListHeading {
            required property string section

            width: list.width - Metrics.spacingMedium
            title: section
            detail: qsTr("2 files")

            AppCheckBox {
                tint: ColorPalette.accent
                checkState: Qt.PartiallyChecked
                toolTip: qsTr("Tick all")
            }
        }
        model: ListModel {
            ListElement { key: "log"; section: "Caches"; name: "install.log"; path: "~/Library/Logs"; size: "4 KB"; symbol: "doc.text.fill" }
            ListElement { key: "cache"; section: "Caches"; name: "Cache.db"; path: "~/Library/Caches/Atlas"; size: "18.2 MB"; symbol: "archivebox.fill" }
            ListElement { key: "film"; section: "Large"; name: "Feature.mov"; path: "~/Movies"; size: "3 GB"; symbol: "film.fill" }
            ListElement { key: "image"; section: "Large"; name: "Backup.dmg"; path: "~/Downloads"; size: "812 MB"; symbol: "opticaldisc.fill" }
        }
        delegate: FileRow {}
        onToggled: entry => root.toggle(entry)
    }
    KeyboardList {
        Layout.fillWidth: true
        Layout.preferredHeight: 40
        name: qsTr("Nothing")
        emptyText: qsTr("Nothing matches the filter")
    }

    AppMenu {
        id: rowMenu

        objectName: "galleryRowMenu"

        AppMenuItem {
            objectName: "galleryTick"
            text: qsTr("Tick")
            icon.name: "checkmark"
            keys: qsTr("Space")
            onTriggered: root.toggle(rowMenu.entry)
        }
        AppMenuItem { text: qsTr("Disabled"); icon.name: "lock.fill"; enabled: false }
    }
}
