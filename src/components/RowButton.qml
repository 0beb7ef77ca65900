import QtQuick
import Brivane.Components

// A control in a row of a list. No stop of the Tab key: what it does, the row's menu or a key does as well.
// It acts on what the row showed when the button went down.
SymbolButton {
    id: root

    required property var entry
    property var pressedEntry

    signal chosen(entry: var)

    focusPolicy: Qt.NoFocus
    onPressed: pressedEntry = entry
    onClicked: { // not pressed before by a screen reader
        const meant = pressedEntry ?? entry;
        pressedEntry = undefined;
        chosen(meant);
    }
    onCanceled: pressedEntry = undefined
}
