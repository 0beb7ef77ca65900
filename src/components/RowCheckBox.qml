import QtQuick
import Brivane.Components

// The check box of a row whose click does something else. No stop of the Tab key, and nothing that screen
// readers are told of: both tick the row itself. It acts on what the row showed when the button went down.
AppCheckBox {
    id: root

    required property var entry
    property var pressedEntry

    signal chosen(entry: var)

    focusPolicy: Qt.NoFocus
    Accessible.ignored: true
    onPressed: pressedEntry = entry
    onClicked: chosen(pressedEntry)
}
