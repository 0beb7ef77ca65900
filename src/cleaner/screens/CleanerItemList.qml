import QtQuick
import Brivane.Components
import Brivane.Cleaner

// The items of a category. Space ticks, Ctrl+A ticks all, Left and Escape go back to the categories; before
// that, Escape clears the filter.
KeyboardList {
    id: root

    required property CleanerViewModel viewModel
    readonly property CleanerDetailViewModel detail: viewModel.detail

    signal backWanted()

    function rowOf(item: var): int {
        return detail.rowOf(item);
    }

    objectName: "cleanerItems"
    name: qsTr("Items of %1").arg(detail.name)
    emptyText: detail.emptyText
    model: detail.rows
    spacing: 2
    bottomMargin: Metrics.spacingMedium
    fadesRows: true

    delegate: CleanerItemRow {
        width: ListView.view.width - Metrics.spacingMedium
        viewModel: root.viewModel
        menu: rowMenu
    }

    onToggled: item => detail.toggle(item)
    onEntered: item => detail.toggle(item)
    Keys.onLeftPressed: backWanted()
    Keys.onPressed: event => {
        if (event.key === Qt.Key_Escape && detail.searchText.length > 0)
            rearrange(() => detail.searchText = "");
        else if (event.key === Qt.Key_Escape)
            backWanted();
        else if (event.matches(StandardKey.SelectAll))
            detail.selectAll();
        else if (event.matches(StandardKey.Copy) && currentRow)
            viewModel.copyPath(currentEntry.path);
        else
            return;
        event.accepted = true;
    }

    // Where much goes at once, all rows are new; the keyboard stays on its item.
    Connections {
        id: keeper

        property var entry

        function keepRow(): void {
            root.forceLayout();
            const row = entry === undefined ? -1 : root.rowOf(entry);
            if (row < 0 && (root.currentItem || !root.activeFocus || root.count === 0))
                return;
            const wanted = row < 0 ? root.currentIndex : row;
            root.currentIndex = -1; // the view has no item for the same index
            root.moveTo(wanted);
        }

        target: root.detail.rows

        function onModelAboutToBeReset(): void {
            entry = root.currentEntry;
        }

        function onModelReset(): void {
            if (!root.isRearranged)
                Qt.callLater(keepRow); // qmllint disable
        }
    }

    // Another category begins at its top.
    Connections {
        target: root.detail

        function onCategoryChanged(): void {
            root.currentIndex = root.activeFocus && root.count > 0 ? 0 : -1;
            root.positionViewAtBeginning();
        }
    }
    CleanerItemMenu {
        id: rowMenu

        viewModel: root.viewModel
    }
}
