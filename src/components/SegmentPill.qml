import QtQuick
import QtQuick.Templates as T
import Brivane.Components

// One option of SegmentedPills, which decides whether it is the chosen one.
T.AbstractButton {
    id: root

    required property int index
    required property var modelData
    property bool chosen: false
    property color accent: ColorPalette.accent
    property color chosenTextColor: ColorPalette.textOn(accent)

    objectName: "pill" + index
    text: modelData.label
    focusPolicy: Qt.NoFocus
    hoverEnabled: true
    implicitWidth: Math.ceil(implicitContentWidth) + 2 * Metrics.spacingMedium
    implicitHeight: Metrics.controlHeight - 4

    Accessible.role: Accessible.RadioButton
    Accessible.name: text
    Accessible.checkable: true
    Accessible.checked: chosen
    Accessible.onPressAction: if (root.enabled) root.clicked()

    background: Rectangle {
        radius: height / 2
        color: root.chosen ? root.accent
            : ColorPalette.faded("white", root.down ? 0.12 : root.hovered ? 0.07 : 0)
        Behavior on color { ColorAnimation { duration: Motion.quick } }
    }
    contentItem: AppText {
        text: root.text
        textStyle: AppText.Style.Callout
        font.weight: Font.Medium
        color: root.chosen ? root.chosenTextColor : ColorPalette.secondaryText
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        Accessible.ignored: true
    }
}
