import QtQuick

// An answer that a ConfirmOverlay offers beside "Cancel". Its `objectName` is that of its button.
QtObject {
    enum Style { Plain, Prominent, Destructive }

    property string label
    property string icon
    property int style: ConfirmAnswer.Style.Plain
    property bool enabled: true

    signal chosen()
}
