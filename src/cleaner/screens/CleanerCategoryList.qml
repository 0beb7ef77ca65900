import QtQuick
import Brivane.Components
import Brivane.Cleaner

// The categories. Space ticks, Enter and Right go to the items.
KeyboardList {
    id: root

    required property CleanerViewModel viewModel

    signal itemsWanted()

    function rowOf(type: var): int {
        return viewModel.rowOf(type);
    }

    function open(type: string): void {
        viewModel.selectCategory(type);
        itemsWanted();
    }

    objectName: "cleanerCategories"
    name: qsTr("Categories")
    model: viewModel.categories
    spacing: 2
    bottomMargin: Metrics.spacingMedium
    fadesRows: true

    delegate: CleanerCategoryRow {
        width: ListView.view.width - Metrics.spacingMedium
        viewModel: root.viewModel
    }

    onToggled: type => viewModel.toggleCategory(type)
    onEntered: type => open(type)
    Keys.onRightPressed: event => {
        event.accepted = currentRow !== null;
        if (event.accepted)
            open(currentEntry);
    }
}
