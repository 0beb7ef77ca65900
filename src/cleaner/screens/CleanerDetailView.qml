import QtQuick
import QtQuick.Layouts
import Brivane.Components
import Brivane.Cleaner

// One category: what it is, why it may go, and its items, which can be filtered.
FocusScope {
    id: root

    required property CleanerViewModel viewModel
    readonly property CleanerDetailViewModel detail: viewModel.detail

    signal backWanted()

    function takeFocus(): void {
        list.forceActiveFocus(Qt.TabFocusReason);
    }

    function focusFilter(): void {
        filter.forceActiveFocus(Qt.ShortcutFocusReason);
        filter.selectAll();
    }

    objectName: "cleanerDetail"
    Accessible.role: Accessible.Grouping
    Accessible.name: detail.name

    ColumnLayout {
        anchors.fill: parent
        spacing: Metrics.spacingMedium

        CleanerDetailHeader {
            Layout.fillWidth: true
            Layout.leftMargin: Metrics.spacingHuge
            Layout.rightMargin: Metrics.spacingHuge
            detail: root.detail
        }
        RowLayout {
            Layout.fillWidth: true
            Layout.leftMargin: Metrics.spacingHuge
            Layout.rightMargin: Metrics.spacingHuge
            spacing: Metrics.spacingMedium

            FilterField {
                id: filter

                objectName: "cleanerFilter"
                Layout.preferredWidth: 200
                placeholderText: qsTr("Filter items...")
                text: root.detail.searchText
                onTextChanged: list.rearrange(() => root.detail.searchText = text)
                onDismissed: root.takeFocus()
            }
            ChipRow {
                objectName: "extensionChips"
                Layout.fillWidth: true
                name: qsTr("Kind of file")
                model: root.detail.chips
                chosenIndex: root.detail.selectedChip
                accent: root.detail.tint
                onActivated: index => list.rearrange(() => root.detail.selectChip(index))
            }
        }
        CleanerItemList {
            id: list

            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.leftMargin: Metrics.spacingMedium
            focus: true
            viewModel: root.viewModel
            onBackWanted: root.backWanted()
        }
    }
}
