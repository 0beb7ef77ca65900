import QtQuick
import QtQuick.Layouts
import Brivane.Components

// What is chosen, counted and waited for.
GallerySection {
    id: root

    property int mixed: Qt.PartiallyChecked
    property bool on: true
    property int days: 5
    property int count: 9
    property int chip: 1

    title: qsTr("Choices, figures, progress")

    Flow {
        Layout.fillWidth: true
        spacing: Metrics.spacingLarge

        AppCheckBox { objectName: "checkBox"; label: qsTr("Some of them"); checkState: root.mixed; onClicked: root.mixed = root.mixed === Qt.Checked ? Qt.Unchecked : Qt.Checked }
        AppCheckBox { label: qsTr("All"); checkState: Qt.Checked; tint: ColorPalette.orange }
        AppCheckBox { label: qsTr("None") }
        AppCheckBox { label: qsTr("Disabled"); checkState: Qt.Checked; enabled: false }
        AppSwitch { objectName: "switch"; label: qsTr("On"); isOn: root.on; onClicked: root.on = !root.on }
        AppSwitch { label: qsTr("Off"); isOn: false }
        AppSwitch { label: qsTr("Disabled"); isOn: true; enabled: false }
    }
    RowLayout {
        spacing: Metrics.spacingMedium

        MenuPicker {
            objectName: "picker"
            name: qsTr("Days in quarantine")
            selection: root.days
            options: [{ value: 3, label: qsTr("3 days") }, { value: 7, label: qsTr("7 days") }, { value: 30, label: qsTr("30 days") }]
            onChosen: value => root.days = value

            function foreignLabel(value: var): string {
                return qsTr("%1 days").arg(value);
            }
        }
        MenuPicker { name: qsTr("Order"); selection: 0; options: [{ value: 0, label: qsTr("Largest first") }]; enabled: false }
        Badge { text: qsTr("Boot") }
        Badge { text: qsTr("7d"); tint: ColorPalette.warning; weight: Font.DemiBold }
        Badge { text: qsTr("Safe"); icon: "checkmark.shield.fill"; tint: ColorPalette.success; toolTip: qsTr("Comes back by itself") }
    }
    RowLayout {
        spacing: Metrics.spacingSmall

        StatPill { value: root.count; label: qsTr("Items") }
        StatPill { icon: "clock"; value: qsTr("7 days"); label: qsTr("Auto-purge") }
        StatPill { isBare: true; icon: "clock"; value: qsTr("1.4 s") }
        StatPill { isBare: true; value: qsTr("1,204"); label: qsTr("files") }
        SymbolButton { icon.name: "plus"; toolTip: qsTr("One more"); onClicked: ++root.count }
    }
    RowLayout {
        spacing: Metrics.spacingSmall

        StatCard { Layout.fillWidth: true; icon: "app.fill"; value: qsTr("212 MB"); label: qsTr("App"); color: ColorPalette.purple }
        StatCard { Layout.fillWidth: true; icon: "doc.on.doc.fill"; value: qsTr("1.4 GB"); label: qsTr("Related Files"); color: ColorPalette.orange }
        StatCard { Layout.fillWidth: true; value: root.count; label: qsTr("Groups"); color: ColorPalette.indigo }
    }
    ChipRow {
        objectName: "chips"
        Layout.fillWidth: true
        name: qsTr("Kind of file")
        ground: ColorPalette.cardBackground
        chosenIndex: root.chip
        model: ListModel {
            ListElement { label: "All" }
            ListElement { label: ".log (214)" }
            ListElement { label: ".plist (38)" }
            ListElement { label: ".sqlite (17)" }
            ListElement { label: ".data (9)" }
            ListElement { label: ".archive (4)" }
            ListElement { label: ".bundle (2)" }
            ListElement { label: ".zip (1)" }
        }
        onActivated: index => root.chip = index
    }
    ProgressPanel { Layout.fillWidth: true; text: qsTr("Restoring 3 of 8…"); detail: qsTr("18.2 MB"); fraction: 0.375 }
    ProgressPanel { Layout.fillWidth: true; text: qsTr("Looking for traces…"); canStop: true; tint: ColorPalette.purple }
}
