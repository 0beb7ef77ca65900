import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Brivane.Components

// One line of an AppMenu: a symbol, what it does, and the keys that do the same; or a choice.
T.MenuItem {
    id: root

    property string keys
    property bool isChosen: false // of choices, the one that holds

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: Metrics.controlHeight
    leftPadding: Metrics.spacingSmall
    rightPadding: Metrics.spacingSmall
    Accessible.name: text
    // A state "disabled" is not told to screen readers.
    Accessible.description: !enabled ? qsTr("unavailable") : isChosen ? qsTr("chosen") : keys
    Accessible.onPressAction: if (enabled) root.triggered()
    // A key that opened the menu and is still held down does not choose.
    Keys.onPressed: event => event.accepted = event.isAutoRepeat
        && [Qt.Key_Return, Qt.Key_Enter, Qt.Key_Space].includes(event.key)

    background: Rectangle {
        radius: Metrics.radiusSmall
        color: ColorPalette.faded("white", root.down ? 0.14 : root.highlighted ? 0.08 : 0)
    }

    contentItem: RowLayout {
        spacing: Metrics.spacingSmall
        opacity: root.enabled ? 1 : 0.45

        Symbol {
            visible: root.icon.name.length > 0
            name: root.icon.name
            size: 16
            color: ColorPalette.secondaryText
        }
        AppText {
            Layout.fillWidth: true
            elide: Text.ElideRight
            text: root.text
            Accessible.ignored: true
        }
        Symbol {
            visible: root.isChosen
            name: "checkmark"
            size: 16
        }
        AppText {
            Layout.leftMargin: Metrics.spacingLarge
            visible: root.keys.length > 0
            text: root.keys
            textStyle: AppText.Style.Caption
            Accessible.ignored: true
        }
    }
}
