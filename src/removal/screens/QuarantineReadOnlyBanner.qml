import QtQuick
import QtQuick.Layouts
import Brivane.Components
import Brivane.Removal

// Says why the store can only be looked at, and tries again.
Rectangle {
    id: root

    required property QuarantineViewModel viewModel

    function takeFocus(): void {
        button.forceActiveFocus(Qt.TabFocusReason);
    }

    objectName: "readOnlyBanner"
    Accessible.role: Accessible.AlertMessage
    Accessible.name: reason.text
    implicitHeight: line.implicitHeight + 2 * Metrics.spacingSmall
    radius: Metrics.radiusMedium
    color: ColorPalette.faded(ColorPalette.warning, 0.1)
    border.width: 1
    border.color: ColorPalette.faded(ColorPalette.warning, 0.25)

    RowLayout {
        id: line

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        anchors.leftMargin: Metrics.spacingMedium
        anchors.rightMargin: Metrics.spacingSmall
        spacing: Metrics.spacingMedium

        Symbol {
            name: "lock.fill"
            size: 18
            color: ColorPalette.warning
        }
        AppText {
            id: reason

            objectName: "readOnlyReason"
            Layout.fillWidth: true
            wrapMode: Text.Wrap
            text: qsTr("%1. Here it can only be looked at.").arg(root.viewModel.readOnlyReason)
            Accessible.ignored: true
        }
        CapsuleActionButton {
            id: button

            objectName: "tryAgain"
            icon.name: "arrow.clockwise"
            label: qsTr("Try Again")
            color: ColorPalette.warning
            onClicked: root.viewModel.tryAgain()
        }
    }
}
