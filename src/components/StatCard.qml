import QtQuick
import QtQuick.Layouts
import Brivane.Components

// A figure that a screen is about: its symbol, its value and what it counts, on a card.
ModuleCard {
    id: root

    property string icon
    property string value
    property string label
    property color color: ColorPalette.accent

    padding: Metrics.spacingMedium
    Accessible.role: Accessible.StaticText
    Accessible.focusable: false
    Accessible.name: label + ": " + value
    Accessible.onRoleChanged: {
        if (Accessible.role !== Accessible.StaticText)
            Accessible.role = Accessible.StaticText;
    }

    RowLayout {
        anchors.fill: parent
        spacing: Metrics.spacingMedium

        IconTile {
            visible: root.icon.length > 0
            icon: root.icon
            tint: root.color
        }
        ColumnLayout {
            Layout.fillWidth: true
            spacing: 0

            NumericText {
                text: root.value
                color: root.icon.length > 0 ? ColorPalette.primaryText : root.color
                pixelSize: Metrics.textTitle - 2
                Accessible.ignored: true
            }
            AppText {
                Layout.fillWidth: true
                elide: Text.ElideRight
                text: root.label
                textStyle: AppText.Style.Caption
                Accessible.ignored: true
            }
        }
    }
}
