import QtQuick
import QtQuick.Templates as T
import Brivane.Components

// Explains the item that it lies in, after a moment of the pointer's rest or while the keyboard is on it.
Item {
    id: root

    property string text
    property bool focusShown: false

    anchors.fill: parent

    HoverHandler {
        id: pointer
        enabled: root.text.length > 0
    }

    T.ToolTip {
        id: tip

        parent: root
        visible: root.text.length > 0 && (pointer.hovered || root.focusShown)
        delay: 600
        text: root.text
        x: Math.round((root.width - width) / 2)
        y: root.height + Metrics.spacingTiny
        margins: Metrics.spacingSmall
        padding: Metrics.spacingSmall
        topPadding: Metrics.spacingTiny
        bottomPadding: Metrics.spacingTiny
        implicitWidth: Math.min(280, Math.ceil(implicitContentWidth)) + leftPadding + rightPadding
        implicitHeight: Math.ceil(implicitContentHeight) + topPadding + bottomPadding
        closePolicy: T.Popup.CloseOnEscape

        contentItem: AppText {
            text: tip.text
            textStyle: AppText.Style.Caption
            color: ColorPalette.primaryText
            wrapMode: Text.Wrap
            Accessible.ignored: true // the control says it
        }
        background: Rectangle {
            color: ColorPalette.surfaceLight
            radius: Metrics.radiusSmall
            border.width: 1
            border.color: ColorPalette.hairlineStrong
        }
    }
}
