import QtQuick
import Brivane.Components
import Brivane.Scanner

// The focused folder twice: as a list, and as a chart beside it.
FocusScope {
    id: root

    required property ScanViewModel viewModel
    required property bool showsSunburst

    LiveFolderTree {
        id: list

        width: Math.round(Math.max(400, Math.min(520, root.width * 0.46)))
        height: parent.height
        focus: true
        viewModel: root.viewModel
    }
    Rectangle {
        id: separator

        anchors.left: list.right
        width: 1
        height: parent.height
        color: ColorPalette.hairline
    }
    ChartPane {
        anchors.left: separator.right
        anchors.right: parent.right
        height: parent.height
        viewModel: root.viewModel
        showsSunburst: root.showsSunburst
    }
}
