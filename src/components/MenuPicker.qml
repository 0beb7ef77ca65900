import QtQuick
import QtQuick.Layouts
import Brivane.Components

// One choice of many: a button that shows it, and a menu of all. A selection that is none of the options
// is shown as it is, and kept until the user chooses.
//
// The choice belongs to the screen: bind `selection`, and assign it in `onChosen`.
BaseButton {
    id: root

    property string name // what is chosen
    property var options: [] // of { value, label }
    property var selection

    readonly property int currentIndex: options.findIndex(option => option.value === selection)
    readonly property string valueText: currentIndex >= 0 ? options[currentIndex].label : foreignLabel(selection)

    signal chosen(value: var)

    // To be overridden where a value is not its own text.
    function foreignLabel(value: var): string {
        return String(value ?? "");
    }

    function openMenu(): void {
        menu.popup(root, 0, height + Metrics.spacingTiny);
        menu.currentIndex = Math.max(0, currentIndex);
    }

    text: name
    role: Accessible.ComboBox
    Accessible.description: enabled ? valueText : qsTr("unavailable")
    cornerRadius: Metrics.radiusSmall + 2
    rightPadding: Metrics.spacingSmall
    onClicked: openMenu()
    Keys.onDownPressed: openMenu()
    Keys.onUpPressed: openMenu()

    background: Rectangle {
        radius: root.cornerRadius
        color: ColorPalette.faded("white", menu.visible ? 0.12 : [0.05, 0.09, 0.12][root.liveliness])
        border.width: 1
        border.color: ColorPalette.hairline
        opacity: root.enabled ? 1 : 0.5
    }
    contentItem: RowLayout {
        spacing: Metrics.spacingSmall
        opacity: root.enabled ? 1 : 0.45

        AppText {
            objectName: "pickedValue"
            Layout.fillWidth: true
            elide: Text.ElideRight
            text: root.valueText
            Accessible.ignored: true
        }
        Symbol {
            name: "chevron.down"
            size: 16
            color: ColorPalette.secondaryText
        }
    }

    AppMenu {
        id: menu

        objectName: "pickerMenu"
        title: root.name
        width: Math.max(implicitWidth, root.width)

        Repeater {
            model: root.options

            AppMenuItem {
                required property int index
                required property var modelData

                objectName: "choice" + index
                text: modelData.label
                isChosen: index === root.currentIndex
                onTriggered: root.chosen(modelData.value)
            }
        }
    }
}
