import QtQuick
import Brivane.Components

// Lies in a text that may be cut, and shows the whole of it under the pointer. Made only while it is wanted,
// so that it costs a list's rows nothing.
Loader {
    id: root

    required property AppText whole
    required property bool isWanted

    anchors.fill: parent
    active: isWanted && whole.truncated
    sourceComponent: ToolTipArea {
        text: root.whole.text
    }
}
