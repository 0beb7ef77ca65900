import QtQuick
import QtQuick.Layouts
import Brivane.Components

// A sentence to take note of, beside its symbol; on a ground of its own colour where it is a warning.
Rectangle {
    id: root

    property string icon
    property string text
    property color tint: ColorPalette.secondaryText
    property bool isWarning: false

    readonly property int margin: isWarning ? Metrics.spacingMedium : 0

    implicitWidth: row.implicitWidth + 2 * margin
    implicitHeight: row.implicitHeight + 2 * (isWarning ? Metrics.spacingSmall : 2)
    radius: Metrics.radiusMedium
    color: isWarning ? ColorPalette.faded(tint, 0.1) : "transparent"
    border.width: isWarning ? 1 : 0
    border.color: ColorPalette.faded(tint, 0.25)
    Accessible.role: isWarning ? Accessible.AlertMessage : Accessible.StaticText
    Accessible.focusable: false
    Accessible.name: text

    RowLayout {
        id: row

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.leftMargin: root.margin
        anchors.rightMargin: root.margin
        anchors.verticalCenter: parent.verticalCenter
        spacing: Metrics.spacingSmall

        Symbol {
            Layout.alignment: Qt.AlignTop
            visible: root.icon.length > 0
            name: root.icon
            size: 16
            color: root.tint
        }
        AppText {
            Layout.fillWidth: true
            wrapMode: Text.Wrap
            text: root.text
            textStyle: AppText.Style.Callout
            color: root.isWarning ? ColorPalette.primaryText : ColorPalette.secondaryText
            Accessible.ignored: true
        }
    }
}
