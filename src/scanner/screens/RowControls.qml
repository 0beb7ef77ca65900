import QtQuick
import Brivane.Components

// The two actions at hand in a row. Not stops of the Tab key: the row's keys and menu do the same.
Row {
    id: root

    property bool isStaged: false

    signal reveal
    signal stage

    spacing: 2

    SymbolButton {
        objectName: "revealRow"
        focusPolicy: Qt.NoFocus
        icon.name: "folder"
        toolTip: qsTr("Reveal in Files")
        onClicked: root.reveal()
    }
    SymbolButton {
        objectName: "stageRow"
        focusPolicy: Qt.NoFocus
        icon.name: "trash"
        color: root.isStaged ? ColorPalette.danger : ColorPalette.secondaryText
        toolTip: root.isStaged ? qsTr("Staged for deletion") : qsTr("Stage for deletion")
        onClicked: root.stage()
    }
}
