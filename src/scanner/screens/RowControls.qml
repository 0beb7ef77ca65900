import QtQuick
import Brivane.Components
import Brivane.Scanner

// The two actions at hand in a row. Not stops of the Tab key: the row's keys and menu do the same.
Row {
    id: root

    required property NodeActions actions
    required property fileNode node
    property bool isStaged: false

    // What a click means: what the row showed when the button went down.
    property fileNode pressedNode

    onNodeChanged: {
        if (!revealButton.down && !stageButton.down)
            pressedNode = node;
    }
    Component.onCompleted: pressedNode = node

    spacing: 2

    SymbolButton {
        id: revealButton

        objectName: "revealRow"
        focusPolicy: Qt.NoFocus
        icon.name: "folder"
        toolTip: qsTr("Reveal in Files")
        onClicked: root.actions.reveal(root.pressedNode)
    }
    SymbolButton {
        id: stageButton

        objectName: "stageRow"
        focusPolicy: Qt.NoFocus
        icon.name: "trash"
        color: root.isStaged ? ColorPalette.danger : ColorPalette.secondaryText
        toolTip: root.isStaged ? qsTr("Staged for deletion") : qsTr("Stage for deletion")
        onClicked: root.actions.stage(root.pressedNode)
    }
}
