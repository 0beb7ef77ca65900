import QtQuick
import QtQuick.Layouts
import Brivane.Components

// A titled part of the gallery.
ColumnLayout {
    id: root

    property string title
    property bool centred: false
    default property alias content: body.data

    spacing: Metrics.spacingSmall

    AppText {
        text: root.title
        textStyle: AppText.Style.Overline
    }
    ModuleCard {
        Layout.fillWidth: true
        Layout.fillHeight: true
        padding: Metrics.spacingLarge

        ColumnLayout {
            id: body

            anchors.left: parent.left
            anchors.right: parent.right
            anchors.verticalCenter: root.centred ? parent.verticalCenter : undefined
            spacing: Metrics.spacingLarge
        }
    }
}
