import QtQuick
import QtQuick.Templates as T
import Brivane.Components

// A field that narrows down a list while one types. Escape clears it; with nothing to clear, Escape and
// Down leave it.
T.TextField {
    id: root

    signal dismissed()

    implicitWidth: 240
    implicitHeight: Metrics.controlHeight
    leftPadding: Metrics.spacingHuge + Metrics.spacingTiny
    rightPadding: clearButton.visible ? Metrics.spacingHuge + Metrics.spacingTiny : Metrics.spacingMedium
    verticalAlignment: TextInput.AlignVCenter
    font.pixelSize: Metrics.textBody
    color: ColorPalette.primaryText
    selectionColor: ColorPalette.faded(ColorPalette.accent, 0.5)
    selectedTextColor: ColorPalette.primaryText
    selectByMouse: true
    inputMethodHints: Qt.ImhNoPredictiveText
    Accessible.name: placeholderText
    Accessible.searchEdit: true

    Keys.onEscapePressed: {
        if (length > 0)
            clear();
        else
            dismissed();
    }
    Keys.onDownPressed: dismissed()
    Keys.onReturnPressed: dismissed()
    Keys.onEnterPressed: dismissed()

    background: Rectangle {
        radius: Metrics.radiusSmall + 2
        color: ColorPalette.faded("white", root.hovered || root.activeFocus ? 0.07 : 0.05)
        border.width: 1
        border.color: root.hovered ? ColorPalette.hairlineStrong : ColorPalette.hairline
    }

    Symbol {
        x: Metrics.spacingSmall
        anchors.verticalCenter: parent.verticalCenter
        name: "magnifyingglass"
        size: 16
        color: root.activeFocus ? ColorPalette.primaryText : ColorPalette.secondaryText
    }
    AppText {
        x: root.leftPadding
        anchors.verticalCenter: parent.verticalCenter
        visible: root.length === 0 && root.preeditText.length === 0
        text: root.placeholderText
        color: ColorPalette.secondaryText
        Accessible.ignored: true
    }
    SymbolButton {
        id: clearButton

        objectName: "clearFilter"
        anchors.right: parent.right
        anchors.rightMargin: 3
        anchors.verticalCenter: parent.verticalCenter
        implicitWidth: 22
        implicitHeight: 22
        visible: root.length > 0
        focusPolicy: Qt.NoFocus
        icon.name: "xmark.circle.fill"
        symbolSize: 14
        toolTip: qsTr("Clear the filter")
        onClicked: root.clear()
    }

    // Where one types is always to be seen.
    FocusRing {
        shown: root.activeFocus
        controlRadius: Metrics.radiusSmall + 2
        gap: 0
    }
}
