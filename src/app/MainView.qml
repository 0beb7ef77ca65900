import QtQuick
import Brivane.Components
import Brivane.Scanner

// What the window holds once the onboarding is over.
FocusScope {
    id: root

    required property ScanViewModel viewModel

    objectName: "mainView"
    implicitWidth: 900
    implicitHeight: 550

    Rectangle {
        anchors.fill: parent
        color: ColorPalette.windowBackground
    }

    ScannerContentView {
        anchors.fill: parent
        focus: true
        viewModel: root.viewModel
    }
}
