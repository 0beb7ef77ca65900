import QtQuick
import Brivane.Components
import Brivane.Removal

// The two actions at hand in a row. Not stops of the Tab key: the row's keys and menu do the same.
Row {
    id: root

    required property QuarantineViewModel viewModel
    required property quarantineItem item
    property bool isShown: false
    // What a click means: what the row showed when the button went down.
    property quarantineItem pressedItem

    onItemChanged: {
        if (!restoreButton.down && !deleteButton.down)
            pressedItem = item;
    }
    Component.onCompleted: pressedItem = item

    spacing: 2

    SymbolButton {
        id: restoreButton

        objectName: "restoreRow"
        enabled: !root.viewModel.isReadOnly
        visible: root.isShown
        focusPolicy: Qt.NoFocus
        icon.name: "arrow.uturn.backward"
        toolTip: qsTr("Restore to original location")
        onClicked: root.viewModel.restore(root.pressedItem)
    }
    SymbolButton {
        id: deleteButton

        objectName: "deleteRow"
        enabled: !root.viewModel.isReadOnly
        visible: root.isShown
        focusPolicy: Qt.NoFocus
        icon.name: "trash"
        color: ColorPalette.danger
        toolTip: qsTr("Delete permanently")
        onClicked: root.viewModel.permanentlyDelete(root.pressedItem)
    }
}
