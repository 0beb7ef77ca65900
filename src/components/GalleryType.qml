import QtQuick
import QtQuick.Layouts
import Brivane.Components

// The text styles, and every symbol.
GallerySection {
    id: root

    title: qsTr("Text and symbols")

    AppText { text: qsTr("Large title 26"); textStyle: AppText.Style.LargeTitle }
    AppText { text: qsTr("Title 20"); textStyle: AppText.Style.Title }
    AppText { text: qsTr("Heading 15"); textStyle: AppText.Style.Heading }
    AppText {
        Layout.fillWidth: true
        wrapMode: Text.Wrap
        text: qsTr("Body 13: Deleted files go to quarantine first, giving you time to restore them.")
    }
    AppText {
        Layout.fillWidth: true
        wrapMode: Text.Wrap
        text: qsTr("Callout 12: Files are compared by content, never by name.")
        textStyle: AppText.Style.Callout
    }
    AppText { text: qsTr("Caption 11 · 1,204 files"); textStyle: AppText.Style.Caption }

    Flow {
        Layout.fillWidth: true
        spacing: Metrics.spacingSmall

        Repeater {
            model: SymbolTable.names

            Symbol {
                required property string modelData

                name: modelData
                size: 18
                color: ColorPalette.secondaryText
            }
        }
    }
}
