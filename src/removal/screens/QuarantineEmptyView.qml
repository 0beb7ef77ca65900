import QtQuick
import Brivane.Components

// What the quarantine shows while nothing is in it.
Column {
    spacing: Metrics.spacingSmall

    IconTile {
        anchors.horizontalCenter: parent.horizontalCenter
        icon: "checkmark.shield.fill"
        tint: ColorPalette.green
        size: 80
    }
    Item {
        width: 1
        height: Metrics.spacingSmall
    }
    AppText {
        objectName: "quarantineEmptyTitle"
        width: parent.width
        horizontalAlignment: Text.AlignHCenter
        text: qsTr("Quarantine is Empty")
        textStyle: AppText.Style.Title
    }
    AppText {
        width: parent.width
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
        lineHeight: 1.3
        color: ColorPalette.secondaryText
        text: qsTr("Files cleaned from Smart Clean will appear here.\nYou have 7 days to restore before permanent deletion.")
    }
}
