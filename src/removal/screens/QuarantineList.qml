import QtQuick
import Brivane.Components
import Brivane.Removal

// The rows. Space ticks, Enter restores and Delete removes what is ticked, or else the row that the keyboard
// is on. Escape clears the filter.
KeyboardList {
    id: root

    required property QuarantineViewModel viewModel

    function rowOf(item: var): int {
        return viewModel.rowOf(item);
    }

    objectName: "quarantineList"
    name: qsTr("Items in quarantine")
    emptyText: qsTr("Nothing matches the filter")
    model: viewModel.rows
    spacing: 2
    fadesRows: true

    delegate: QuarantineRow {
        width: ListView.view.width - Metrics.spacingMedium
        viewModel: root.viewModel
        menu: rowMenu
    }

    onToggled: item => viewModel.toggle(item)
    onEntered: item => viewModel.restoreChosen(item)
    Keys.onPressed: event => {
        if (event.key === Qt.Key_Escape && root.viewModel.searchText.length > 0)
            root.rearrange(() => root.viewModel.searchText = "");
        else if (!root.currentRow)
            return;
        else if (event.key === Qt.Key_Delete && !event.isAutoRepeat)
            root.viewModel.deleteChosen(root.currentEntry);
        else if (event.matches(StandardKey.Copy))
            root.viewModel.copyOriginalPath(root.currentEntry);
        else if (event.matches(StandardKey.SelectAll))
            root.viewModel.toggleAllListed();
        else
            return;
        event.accepted = true;
    }

    QuarantineRowMenu {
        id: rowMenu

        viewModel: root.viewModel
    }
}
