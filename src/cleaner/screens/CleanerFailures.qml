import QtQuick
import QtQuick.Layouts
import Brivane.Components
import Brivane.Cleaner

// What stayed and why, behind a button. Enter shows the one that the keyboard is on.
ColumnLayout {
    id: root

    required property CleanerViewModel viewModel
    required property CleanResultViewModel result

    property bool isOpen: false

    onResultChanged: isOpen = false
    spacing: Metrics.spacingSmall

    Item {
        Layout.fillWidth: true
        implicitHeight: button.height

        HoverPillButton {
            id: button

            objectName: "showFailures"
            anchors.horizontalCenter: parent.horizontalCenter
            label: root.isOpen ? qsTr("Hide What Stayed") : qsTr("Show What Stayed")
            icon.name: root.isOpen ? "chevron.up" : "chevron.down"
            checked: root.isOpen
            onClicked: {
                root.isOpen = !root.isOpen;
                if (root.isOpen)
                    list.forceActiveFocus(Qt.TabFocusReason);
            }
        }
    }
    ModuleCard {
        Layout.fillWidth: true
        visible: root.isOpen
        padding: Metrics.spacingTiny

        KeyboardList {
            id: list

            objectName: "failures"
            anchors.left: parent.left
            anchors.right: parent.right
            implicitHeight: Math.min(190, contentHeight)
            name: qsTr("What stayed")
            spacing: 2
            model: root.result?.failures ?? null

            delegate: KeyboardListRow {
                id: row

                required property string path
                required property string shownPath
                required property string reason

                objectName: "failureRow"
                width: ListView.view.width - Metrics.spacingSmall
                entry: path
                menu: rowMenu
                title: shownPath
                subtitle: reason
                wrapsSubtitle: true
                subtitleColor: ColorPalette.lightened(ColorPalette.red, 0.2)

                trailing: RowButton {
                    objectName: "revealFailure"
                    entry: row.path
                    icon.name: "folder"
                    toolTip: qsTr("Reveal in Finder")
                    onChosen: path => root.viewModel.reveal(path)
                }
            }
            onEntered: path => root.viewModel.reveal(path)
            Keys.onPressed: event => {
                if (!event.matches(StandardKey.Copy) || !currentRow)
                    return;
                root.viewModel.copyPath(currentEntry);
                event.accepted = true;
            }
        }
    }

    AppMenu {
        id: rowMenu

        objectName: "failureMenu"

        AppMenuItem {
            objectName: "failureReveal"
            text: qsTr("Reveal in Finder")
            icon.name: "folder"
            onTriggered: root.viewModel.reveal(rowMenu.entry)
        }
        AppMenuItem {
            objectName: "failureCopyPath"
            text: qsTr("Copy Path")
            icon.name: "doc.on.clipboard.fill"
            keys: qsTr("Ctrl+C")
            onTriggered: root.viewModel.copyPath(rowMenu.entry)
        }
    }
}
