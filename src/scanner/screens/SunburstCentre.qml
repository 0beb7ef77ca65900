import QtQuick
import Brivane.Components
import Brivane.Scanner

// In the hole of the sunburst: which folder it shows, how large that is, and the way up.
Column {
    id: root

    required property ScanViewModel viewModel
    required property real radius

    readonly property real room: Math.round(1.6 * radius)

    width: room
    spacing: 2

    SymbolButton {
        objectName: "sunburstUp"
        anchors.horizontalCenter: parent.horizontalCenter
        visible: root.viewModel.stats.canGoUp
        icon.name: "chevron.up.circle.fill"
        symbolSize: 20
        color: ColorPalette.accent
        toolTip: qsTr("Go to parent folder")
        onClicked: root.viewModel.drillUp()
        // At the root it goes, and the keyboard with it.
        onVisibleChanged: {
            if (activeFocus && !root.viewModel.stats.canGoUp)
                root.parent.forceActiveFocus(Qt.TabFocusReason);
        }
    }
    AppText {
        width: parent.width
        horizontalAlignment: Text.AlignHCenter
        elide: Text.ElideMiddle
        text: root.viewModel.stats.focusName
        textStyle: AppText.Style.BodyStrong
        Accessible.ignored: true // the heading of the list says both
    }
    AppText {
        width: parent.width
        horizontalAlignment: Text.AlignHCenter
        text: root.viewModel.stats.focusSizeText
        textStyle: AppText.Style.Caption
        Accessible.ignored: true
    }
}
