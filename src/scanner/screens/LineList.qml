import QtQuick
import QtQuick.Templates as T
import Brivane.Components

// Lines of text, a path each, to be scrolled through.
ListView {
    id: root

    property list<string> lines

    clip: true
    focus: true
    model: lines
    boundsBehavior: Flickable.StopAtBounds
    T.ScrollBar.vertical: AppScrollBar {}
    Accessible.role: Accessible.List

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
