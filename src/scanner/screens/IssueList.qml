import QtQuick
import QtQuick.Templates as T
import Brivane.Components

// What could not be read: a path and a reason on each line.
ListView {
    id: root

    property list<string> lines

    clip: true
    focus: true
    model: lines
    boundsBehavior: Flickable.StopAtBounds
    T.ScrollBar.vertical: AppScrollBar {}
    Accessible.role: Accessible.List
    Accessible.name: qsTr("Entries that could not be read")

    delegate: AppText {
        required property string modelData

        width: root.width
        height: 24
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideMiddle
        text: modelData
        textStyle: AppText.Style.Callout
    }
}
