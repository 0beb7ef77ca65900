import QtQuick
import QtQuick.Templates as T
import Brivane.Components
import Brivane.Scanner

// What the focused folder holds, largest first. Up and Down move, Enter and Right go into a folder,
// Left and Backspace go out of it.
FocusScope {
    id: root

    required property ScanViewModel viewModel

    objectName: "liveFolderTree"

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
        highlightMoveDuration: 0
        keyNavigationEnabled: true
        activeFocusOnTab: true
        Accessible.role: Accessible.List
        Accessible.name: qsTr("Contents of %1").arg(root.viewModel.stats.focusName)

        delegate: FolderTreeRow {
            width: ListView.view.width
            viewModel: root.viewModel
        }

        T.ScrollBar.vertical: AppScrollBar {}

        Keys.onPressed: event => {
            const row = list.currentItem as FolderTreeRow;
            if (event.key === Qt.Key_Left || event.key === Qt.Key_Backspace) {
                root.viewModel.drillUp();
            } else if (row && (event.key === Qt.Key_Return || event.key === Qt.Key_Enter || event.key === Qt.Key_Right)) {
                row.activate();
            } else {
                return;
            }
            event.accepted = true;
        }

    }

    Connections {
        target: root.viewModel

        // A keyboard that has come this far goes on from the first row.
        function onFocusedNodeChanged(): void {
            list.currentIndex = list.activeFocus && list.count > 0 ? 0 : -1;
        }
    }
}
