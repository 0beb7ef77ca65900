import QtQuick
import QtQuick.Layouts
import Brivane.Components

// The head of a list's section: its title, what it counts, and controls for all of it (its children).
Item {
    id: root

    required property string title
    property string detail
    property string icon
    property color tint: ColorPalette.secondaryText
    default property alias controls: controlRow.data

    implicitWidth: layout.implicitWidth
    implicitHeight: Math.max(36, layout.implicitHeight)

    RowLayout {
        id: layout

        anchors.fill: parent
        anchors.leftMargin: Metrics.spacingMedium
        anchors.rightMargin: Metrics.spacingSmall
        spacing: Metrics.spacingSmall

        Symbol {
            visible: root.icon.length > 0
            name: root.icon
            size: 16
            color: root.tint
        }
        AppText {
            text: root.title
            textStyle: AppText.Style.Overline
            Accessible.role: Accessible.Heading
            Accessible.name: root.detail.length > 0 ? root.title + ", " + root.detail : root.title
        }
        AppText {
            Layout.fillWidth: true
            elide: Text.ElideRight
            text: root.detail
            textStyle: AppText.Style.Caption
            Accessible.ignored: true
        }
        RowLayout {
            id: controlRow

            spacing: Metrics.spacingSmall
        }
    }
}
