import QtQuick
import QtQuick.Templates as T
import Brivane.Components
import Brivane.Removal

// The rows. Arrows move, Space ticks, Enter restores and Delete removes what is ticked, or else the row
// that the keyboard is on. Escape clears the filter.
ListView {
    id: root

    required property QuarantineViewModel viewModel

    readonly property int rowsInSight: currentItem ? Math.max(1, Math.floor(height / currentItem.height) - 1) : 1
    property bool isRearranged: false

    // Puts the keyboard on a row, and that into sight.
    function moveTo(index: int): void {
        currentIndex = Math.max(0, Math.min(count - 1, index));
        positionViewAtIndex(currentIndex, ListView.Contain);
    }

    // The keyboard is always on a row.
    function showCurrent(): void {
        if (activeFocus && currentIndex < 0 && count > 0)
            currentIndex = 0;
    }

    // Lets `change` filter or sort the rows: at once, and the keyboard stays on its item.
    function rearrange(change: var): void {
        const row = currentItem as QuarantineRow;
        const item = row ? row.item : null;
        isRearranged = true;
        change();
        forceLayout();
        isRearranged = false;
        const index = item ? viewModel.rowOf(item) : -1;
        if (index >= 0)
            moveTo(index);
        else
            currentIndex = activeFocus && count > 0 ? 0 : -1;
    }

    objectName: "quarantineList"
    clip: true
    model: viewModel.rows
    currentIndex: -1
    boundsBehavior: Flickable.StopAtBounds
    spacing: 2
    highlightFollowsCurrentItem: false
    keyNavigationEnabled: false
    activeFocusOnTab: true
    onActiveFocusChanged: showCurrent()
    onCountChanged: showCurrent()
    Accessible.role: Accessible.List
    Accessible.name: qsTr("Items in quarantine")

    // What leaves the store fades away; what is filtered away is gone at once.
    readonly property bool isFading: Motion.enabled && !isRearranged
    remove: isFading ? fading : null
    displaced: isFading ? closing : null

    // The gap closes once the row is gone: two rows in one place could not be read.
    readonly property int fadingTime: Motion.milliseconds(120)
    readonly property Transition fading: Transition {
        NumberAnimation {
            property: "opacity"
            to: 0
            duration: root.fadingTime
            easing.type: Easing.OutQuad
        }
    }
    readonly property Transition closing: Transition {
        SequentialAnimation {
            PauseAnimation {
                duration: root.fadingTime
            }
            NumberAnimation {
                property: "y"
                duration: Motion.milliseconds(180)
                easing.type: Easing.OutQuad
            }
        }
    }

    delegate: QuarantineRow {
        id: row

        width: ListView.view.width - Metrics.spacingMedium
        viewModel: root.viewModel
        hasMenu: menu.visible && menu.item === item
        onMenuRequested: (entry, x, y) => menu.openFor(entry, row, x, y)
    }

    T.ScrollBar.vertical: AppScrollBar {}

    Keys.onPressed: event => {
        const row = root.currentItem as QuarantineRow;
        if (event.key === Qt.Key_Escape && root.viewModel.searchText.length > 0)
            root.rearrange(() => root.viewModel.searchText = "");
        else if (!row)
            return;
        else if (event.key === Qt.Key_Space)
            root.viewModel.toggle(row.item);
        else if ((event.key === Qt.Key_Return || event.key === Qt.Key_Enter) && !event.isAutoRepeat)
            root.viewModel.restoreChosen(row.item);
        else if (event.key === Qt.Key_Delete && !event.isAutoRepeat)
            root.viewModel.deleteChosen(row.item);
        else if (event.key === Qt.Key_Menu || (event.key === Qt.Key_F10 && event.modifiers & Qt.ShiftModifier))
            menu.openFor(row.item, row, Metrics.spacingHuge, row.height);
        else if (event.matches(StandardKey.Copy))
            root.viewModel.copyOriginalPath(row.item);
        else if (event.matches(StandardKey.SelectAll))
            root.viewModel.toggleAllListed();
        else if (event.key === Qt.Key_Up || event.key === Qt.Key_Down)
            root.moveTo(root.currentIndex + (event.key === Qt.Key_Down ? 1 : -1));
        else if (event.key === Qt.Key_PageDown || event.key === Qt.Key_PageUp)
            root.moveTo(root.currentIndex + (event.key === Qt.Key_PageDown ? 1 : -1) * root.rowsInSight);
        else if (event.key === Qt.Key_Home || event.key === Qt.Key_End)
            root.moveTo(event.key === Qt.Key_Home ? 0 : root.count - 1);
        else
            return;
        event.accepted = true;
    }

    QuarantineRowMenu {
        id: menu

        viewModel: root.viewModel
        onClosed: root.forceActiveFocus()
    }
}
