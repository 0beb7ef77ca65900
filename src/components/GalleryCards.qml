import QtQuick
import QtQuick.Layouts
import Brivane.Components

// Cards, tiles and bars as a module's rows put them together.
GallerySection {
    id: root

    title: qsTr("Cards, tiles, bars")

    component VolumeRow: ModuleCard {
        id: card

        property string name
        property string detail
        property string icon
        property real fraction

        Layout.fillWidth: true
        padding: Metrics.spacingMedium

        RowLayout {
            anchors.fill: parent
            spacing: Metrics.spacingMedium

            IconTile {
                icon: card.icon
                tint: ColorPalette.usageColor(card.fraction)
            }
            ColumnLayout {
                Layout.fillWidth: true
                spacing: Metrics.spacingTiny

                RowLayout {
                    AppText { Layout.fillWidth: true; text: card.name; textStyle: AppText.Style.BodyStrong; elide: Text.ElideRight }
                    AppText { text: card.detail; textStyle: AppText.Style.Caption }
                }
                UsageBar { Layout.fillWidth: true; fraction: card.fraction }
            }
        }
    }

    VolumeRow { name: qsTr("System"); detail: qsTr("214 GB free"); icon: "internaldrive.fill"; fraction: 0.46; emphasized: true; tint: ColorPalette.accent }
    VolumeRow { name: qsTr("Work"); detail: qsTr("61 GB free"); icon: "internaldrive.fill"; fraction: 0.83 }
    VolumeRow { name: qsTr("Archive"); detail: qsTr("9 GB free"); icon: "externaldrive.fill"; fraction: 0.97 }

    RowLayout {
        spacing: Metrics.spacingMedium

        IconTile { icon: "sparkles"; tint: ColorPalette.purple; size: 48 }
        IconTile { icon: "doc.on.doc.fill"; tint: ColorPalette.indigo; size: 40 }
        IconTile { icon: "photo.stack.fill"; tint: ColorPalette.pink; size: 32 }
        IconTile { icon: "hammer.fill"; tint: ColorPalette.orange; size: 28 }
        IconTile { icon: "hammer.fill"; tint: ColorPalette.orange; size: 28; dimmed: true }
        IconTile { icon: "no.such.symbol"; tint: ColorPalette.gray; size: 28 }
        PulsingDot { color: ColorPalette.success }
        PulsingDot { }
        BusySpinner { size: 16; color: ColorPalette.secondaryText }
        Item { Layout.fillWidth: true }
    }
}
