import QtQuick
import QtQuick.Layouts
import Brivane.Components

// Every button in every state.
GallerySection {
    id: root

    property int sensitivity: 1

    title: qsTr("Buttons")

    Flow {
        Layout.fillWidth: true
        spacing: Metrics.spacingSmall

        CapsuleActionButton { objectName: "capsuleButton"; label: qsTr("Clean"); icon.name: "sparkles"; toolTip: qsTr("Removes what the tool left behind") }
        CapsuleActionButton { objectName: "busyButton"; label: qsTr("Clean"); busyLabel: qsTr("Cleaning"); isBusy: true }
        CapsuleActionButton { label: qsTr("Delete"); icon.name: "trash"; color: ColorPalette.danger }
        CapsuleActionButton { label: qsTr("Restore"); icon.name: "arrow.uturn.backward"; color: ColorPalette.success }
        CapsuleActionButton { objectName: "disabledButton"; label: qsTr("Disabled"); icon.name: "lock.fill"; color: ColorPalette.purple; enabled: false }
    }
    Flow {
        Layout.fillWidth: true
        spacing: Metrics.spacingSmall

        HoverPillButton { objectName: "pillButton"; label: qsTr("Select All") }
        HoverPillButton { label: qsTr("None") }
        HoverPillButton { label: qsTr("Size"); checkable: true; checked: true }
        HoverPillButton { label: qsTr("Reveal"); icon.name: "folder" }
        HoverPillButton { label: qsTr("Disabled"); enabled: false }
    }
    Row {
        spacing: Metrics.spacingSmall

        SymbolButton { objectName: "symbolButton"; icon.name: "folder"; toolTip: qsTr("Reveal in Files") }
        SymbolButton { icon.name: "trash"; toolTip: qsTr("Stage for deletion"); color: ColorPalette.danger }
        SymbolButton { icon.name: "xmark"; toolTip: qsTr("Disabled"); enabled: false }
    }
    SegmentedPills {
        objectName: "segmentedPills"
        name: qsTr("Sensitivity")
        selection: root.sensitivity
        options: [
            { value: 0, label: qsTr("Near-identical") },
            { value: 1, label: qsTr("Similar") },
            { value: 2, label: qsTr("Loosely similar") },
        ]
        onActivated: value => root.sensitivity = value
    }
    SegmentedPills {
        name: qsTr("Chart")
        selection: 0
        options: [
            { value: 0, objectName: "sunburst", label: qsTr("Sunburst"), icon: "circle.circle.fill" },
            { value: 1, objectName: "treemap", label: qsTr("Treemap"), icon: "square.grid.2x2.fill" },
        ]
        accent: ColorPalette.faded(ColorPalette.accent, 0.24)
        chosenTextColor: ColorPalette.lightened(ColorPalette.accent, 0.4)
    }
    Flow {
        Layout.fillWidth: true
        Layout.topMargin: Metrics.spacingTiny
        Layout.bottomMargin: Metrics.spacingSmall
        spacing: Metrics.spacingLarge

        ProminentActionButton { objectName: "prominentButton"; label: qsTr("Scan for Junk"); icon.name: "magnifyingglass"; colors: [ColorPalette.indigo, ColorPalette.purple] }
        ProminentActionButton { label: qsTr("Plain"); icon.name: "sparkles" }
        ProminentActionButton { label: qsTr("Disabled"); icon.name: "trash"; colors: [ColorPalette.red, ColorPalette.pink]; enabled: false }
    }
}
