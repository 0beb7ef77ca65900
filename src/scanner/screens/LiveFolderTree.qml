import QtQuick
import QtQuick.Templates as T
import Brivane.Components
import Brivane.Scanner

// What the focused folder holds, largest first. Up and Down move, Enter and Right go into a folder,
// Left and Backspace go out of it, Delete stages or unstages, the Menu key opens the row's menu.
FocusScope {
    id: root

    required property ScanViewModel viewModel

    // Puts the keyboard on a row, and that into sight.
    function moveTo(index: int): void {
        list.currentIndex = Math.max(0, Math.min(list.count - 1, index));
        list.positionViewAtIndex(list.currentIndex, ListView.Contain);
    }

    // The keyboard is always on a row.
    function showCurrent(): void {
        if (list.activeFocus && list.currentIndex < 0 && list.count > 0)
            list.currentIndex = 0;
    }

    // A file that was dropped is selected by the end of its scan, and may lie far down.
    function showSelected(): void {
        const row = viewModel.folder.rowOf(viewModel.selectedNode);
        if (row >= 0)
            moveTo(row);
    }

    objectName: "liveFolderTree"
    Component.onCompleted: Qt.callLater(showSelected) // qmllint disable

    Item {
        id: header

        width: parent.width
        height: 52

        BaseButton {
            id: upButton

            objectName: "goUp"
            anchors.left: parent.left
            anchors.leftMargin: Metrics.spacingLarge
            anchors.verticalCenter: parent.verticalCenter
            width: Metrics.controlHeight
            height: Metrics.controlHeight
            visible: root.viewModel.stats.canGoUp
            toolTip: qsTr("Go to parent folder")
            onClicked: root.viewModel.drillUp()
            // At the root it goes, and the keyboard with it.
            onVisibleChanged: {
                if (activeFocus && !root.viewModel.stats.canGoUp)
                    list.forceActiveFocus(Qt.TabFocusReason);
            }

            background: Rectangle {
                radius: height / 2
                color: ColorPalette.faded("white", [0.05, 0.1, 0.14][upButton.liveliness])
            }
            contentItem: Item {
                Symbol {
                    anchors.centerIn: parent
                    name: "chevron.left"
                    size: 18
                }
            }
        }

        Symbol {
            id: folderSymbol

            anchors.left: upButton.visible ? upButton.right : parent.left
            anchors.leftMargin: upButton.visible ? Metrics.spacingMedium : Metrics.spacingHuge
            anchors.verticalCenter: parent.verticalCenter
            visible: root.viewModel.hasTree
            name: "folder.fill"
            size: 20
            color: ColorPalette.accent
        }
        AppText {
            objectName: "focusName"
            anchors.left: folderSymbol.right
            anchors.leftMargin: Metrics.spacingSmall
            anchors.right: sizeText.left
            anchors.rightMargin: Metrics.spacingLarge
            anchors.verticalCenter: parent.verticalCenter
            elide: Text.ElideMiddle
            text: root.viewModel.stats.focusName
            textStyle: AppText.Style.Heading
        }
        AppText {
            id: sizeText

            objectName: "focusSize"
            anchors.right: parent.right
            anchors.rightMargin: list.anchors.rightMargin + 32 // over the sizes of the rows
            anchors.verticalCenter: parent.verticalCenter
            text: root.viewModel.stats.focusSizeText
            textStyle: AppText.Style.Heading
        }
    }

    AppText {
        anchors.centerIn: list
        visible: !root.viewModel.hasTree
        text: qsTr("Initializing scan...")
        color: ColorPalette.secondaryText
    }
    AppText {
        anchors.centerIn: list
        visible: root.viewModel.hasTree && list.count === 0 && root.viewModel.scanState === ScanViewModel.Completed
        text: qsTr("Nothing here takes up space")
        color: ColorPalette.secondaryText
    }

    ListView {
        id: list

        objectName: "folderList"
        anchors.top: header.bottom
        anchors.bottom: parent.bottom
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.leftMargin: Metrics.spacingMedium
        anchors.rightMargin: Metrics.spacingMedium
        focus: true
        clip: true
        model: root.viewModel.folder
        currentIndex: -1
        boundsBehavior: Flickable.StopAtBounds
        reuseItems: true
        transform: Translate { id: slide }
        highlightFollowsCurrentItem: false // it would scroll also when a report moves the current row
        keyNavigationEnabled: false
        activeFocusOnTab: true
        onActiveFocusChanged: root.showCurrent()
        onCountChanged: root.showCurrent()
        Accessible.role: Accessible.List
        Accessible.name: qsTr("Contents of %1").arg(root.viewModel.stats.focusName)

        delegate: FolderTreeRow {
            id: row

            width: ListView.view.width
            viewModel: root.viewModel
            // A report that moves the row takes the keyboard along, and does not scroll.
            ListView.onIsCurrentItemChanged: {
                if (ListView.isCurrentItem)
                    root.viewModel.folder.follow(node);
            }
            hasMenu: menu.visible && menu.node === node
            onMenuRequested: (entry, x, y) => menu.openFor(entry, row, x, y)
        }

        T.ScrollBar.vertical: AppScrollBar {}

        Keys.onPressed: event => {
            const row = list.currentItem as FolderTreeRow;
            if (event.key === Qt.Key_Left || event.key === Qt.Key_Backspace)
                root.viewModel.drillUp();
            else if (!row)
                return;
            else if (event.key === Qt.Key_Return || event.key === Qt.Key_Enter || event.key === Qt.Key_Right)
                row.activate(row.node);
            else if (event.key === Qt.Key_Delete)
                root.viewModel.actions.toggleStaged(row.node);
            else if (event.key === Qt.Key_Menu || (event.key === Qt.Key_F10 && event.modifiers & Qt.ShiftModifier))
                menu.openFor(row.node, row, Metrics.spacingHuge, row.height);
            else if (event.matches(StandardKey.Copy))
                root.viewModel.actions.copyPath(row.node);
            else if (event.key === Qt.Key_Up || event.key === Qt.Key_Down)
                root.moveTo(list.currentIndex + (event.key === Qt.Key_Down ? 1 : -1));
            else if (event.key === Qt.Key_PageDown || event.key === Qt.Key_PageUp)
                root.moveTo(list.currentIndex + (event.key === Qt.Key_PageDown ? 1 : -1) * list.rowsInSight);
            else if (event.key === Qt.Key_Home || event.key === Qt.Key_End)
                root.moveTo(event.key === Qt.Key_Home ? 0 : list.count - 1);
            else
                return;
            event.accepted = true;
        }

        readonly property int rowsInSight: currentItem ? Math.max(1, Math.floor(height / currentItem.height) - 1) : 1
    }

    RowMenu {
        id: menu

        actions: root.viewModel.actions
        onClosed: list.forceActiveFocus()
    }

    ParallelAnimation {
        id: arrival

        Spring { target: slide; property: "y"; from: 14; to: 0; response: 0.4; damping: 0.8 }
        Spring { target: list; property: "opacity"; from: 0; to: 1; response: 0.4; damping: 1 }
    }

    Connections {
        target: root.viewModel.folder

        function onPictureChanged(): void {
            if (root.viewModel.scanState === ScanViewModel.Completed)
                Qt.callLater(root.showSelected); // qmllint disable
        }
    }

    Connections {
        target: root.viewModel

        // A keyboard that has come this far goes on from the first row.
        function onFocusedNodeChanged(): void {
            list.currentIndex = list.activeFocus && list.count > 0 ? 0 : -1;
            list.positionViewAtBeginning();
            arrival.restart();
        }
    }
}
