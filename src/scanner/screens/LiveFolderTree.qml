import QtQuick
import Brivane.Components
import Brivane.Scanner

// What the focused folder holds, largest first. Enter and Right go into a folder, Left and Backspace go out
// of it, Delete stages or unstages.
FocusScope {
    id: root

    required property ScanViewModel viewModel

    // A file that was dropped is selected by the end of its scan, and may lie far down.
    function showSelected(): void {
        const row = viewModel.folder.rowOf(viewModel.selectedNode);
        if (row >= 0)
            list.moveTo(row);
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

    KeyboardList {
        id: list

        objectName: "folderList"
        anchors.top: header.bottom
        anchors.bottom: parent.bottom
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.leftMargin: Metrics.spacingMedium
        anchors.rightMargin: Metrics.spacingMedium
        focus: true
        name: qsTr("Contents of %1").arg(root.viewModel.stats.focusName)
        model: root.viewModel.folder
        reuseItems: true
        transform: Translate { id: slide }
        onEntered: (list.currentRow as FolderTreeRow).activate(list.currentEntry)

        delegate: FolderTreeRow {
            width: ListView.view.width
            viewModel: root.viewModel
            menu: rowMenu
            // A report that moves the row takes the keyboard along, and does not scroll.
            ListView.onIsCurrentItemChanged: {
                if (ListView.isCurrentItem)
                    root.viewModel.folder.follow(node);
            }
        }

        Keys.onPressed: event => {
            if (event.key === Qt.Key_Left || event.key === Qt.Key_Backspace)
                root.viewModel.drillUp();
            else if (!list.currentRow)
                return;
            else if (event.key === Qt.Key_Right)
                (list.currentRow as FolderTreeRow).activate(list.currentEntry);
            else if (event.key === Qt.Key_Delete && !event.isAutoRepeat)
                root.viewModel.actions.toggleStaged(list.currentEntry);
            else if (event.matches(StandardKey.Copy))
                root.viewModel.actions.copyPath(list.currentEntry);
            else
                return;
            event.accepted = true;
        }
    }

    RowMenu {
        id: rowMenu

        actions: root.viewModel.actions
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
