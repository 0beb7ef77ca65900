import QtQuick
import Brivane.Components
import Brivane.Removal

// A symbol for a file, by the extension of its name.
IconTile {
    required property string fileName

    size: 32
    symbolSize: 18
    icon: QuarantineFileIcons.symbol(fileName)
    tint: QuarantineFileIcons.color(fileName)
}
