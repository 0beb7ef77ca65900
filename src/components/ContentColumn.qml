import QtQuick
import QtQuick.Layouts
import Brivane.Components

// Stacks its children in a centred column, no wider than `maxWidth`.
Item {
    id: root

    property real maxWidth: Metrics.contentWidth
    property real margins: Metrics.spacingHuge
    property alias spacing: column.spacing
    default property alias content: column.data

    implicitWidth: Math.min(maxWidth, column.implicitWidth) + 2 * margins
    implicitHeight: column.implicitHeight + 2 * margins

    ColumnLayout {
        id: column

        // On whole pixels, or all hairlines inside blur.
        x: Math.round((root.width - width) / 2)
        y: root.margins
        width: Math.round(Math.max(0, Math.min(root.maxWidth, root.width - 2 * root.margins)))
        height: Math.max(implicitHeight, root.height - 2 * root.margins)
        spacing: Metrics.spacingLarge
    }
}
