import QtQuick
import Brivane.Components

// One option of SegmentedPills, which decides whether it is the chosen one.
Item {
    id: root

    required property int index
    required property var modelData
    property bool chosen: false
    property bool hasKeyboard: false
    property bool isOutlined: false // where no ground of the row holds the options together
    readonly property string text: modelData.label
    property color accent: ColorPalette.accent
    property color chosenTextColor: ColorPalette.textOn(accent)

    signal clicked()

    onHasKeyboardChanged: {
        if (hasKeyboard)
            ScreenReader.focusMoved(root);
    }

    objectName: modelData.objectName ?? "pill" + index
    implicitWidth: Math.ceil(label.implicitWidth) + 2 * Metrics.spacingMedium
    implicitHeight: Metrics.controlHeight - 4

    Accessible.role: Accessible.RadioButton
    Accessible.name: modelData.label
    Accessible.checkable: true
    Accessible.checked: chosen
    Accessible.focused: hasKeyboard
    Accessible.onPressAction: if (root.enabled) root.clicked()

    HoverHandler { id: pointer }
    TapHandler {
        id: press

        gesturePolicy: TapHandler.ReleaseWithinBounds
        onTapped: root.clicked()
    }

    Rectangle {
        anchors.fill: parent
        radius: height / 2
        color: root.chosen ? root.accent
            : ColorPalette.faded("white", press.pressed ? 0.12 : pointer.hovered ? 0.07 : root.isOutlined ? 0.03 : 0)
        border.width: root.isOutlined && !root.chosen ? 1 : 0
        border.color: ColorPalette.hairline
        Behavior on color { ColorAnimation { duration: Motion.milliseconds(150); easing.type: Easing.InOutQuad } }
    }
    ButtonLabel {
        id: label

        anchors.centerIn: parent
        width: Math.min(implicitWidth, root.width - 2 * Metrics.spacingMedium)
        symbol: root.modelData.icon ?? ""
        text: root.modelData.label
        elide: Text.ElideMiddle // a figure at its end stays
        symbolSize: 15
        color: root.chosen ? root.chosenTextColor : ColorPalette.secondaryText
    }
}
