import QtQuick
import Brivane.App
import Brivane.Components

// Who this is, and the application menu.
Item {
    id: root

    required property ShellViewModel shell

    implicitHeight: 52

    Image {
        id: icon

        objectName: "applicationIcon"
        anchors.left: parent.left
        anchors.leftMargin: Metrics.spacingMedium
        anchors.verticalCenter: parent.verticalCenter
        width: 26
        height: 26
        sourceSize.width: width
        sourceSize.height: height
        source: "qrc:/brivane/com.brivane.app.svg"
        Accessible.ignored: true
    }
    Symbol { // where no SVG images can be read
        anchors.centerIn: icon
        visible: icon.status === Image.Error
        name: "internaldrive.fill"
        size: 22
        color: ColorPalette.accent
    }
    AppText {
        anchors.left: icon.right
        anchors.leftMargin: Metrics.spacingSmall
        anchors.verticalCenter: parent.verticalCenter
        text: "Brivane"
        textStyle: AppText.Style.Heading
    }

    BaseButton {
        id: menuButton

        objectName: "menuButton"
        anchors.right: parent.right
        anchors.rightMargin: Metrics.spacingSmall
        anchors.verticalCenter: parent.verticalCenter
        width: Metrics.controlHeight
        height: Metrics.controlHeight
        cornerRadius: Metrics.radiusSmall
        toolTip: menu.visible ? "" : qsTr("Menu")
        Accessible.name: qsTr("Menu")
        role: Accessible.ButtonMenu
        onClicked: menu.toggle(visualFocus)

        background: Rectangle {
            radius: Metrics.radiusSmall
            color: ColorPalette.faded("white", menu.visible ? 0.1 : [0, 0.07, 0.12][menuButton.liveliness])
            Behavior on color { ColorAnimation { duration: Motion.quick } }
        }
        contentItem: Item {
            Symbol {
                anchors.centerIn: parent
                name: "line.3.horizontal"
                size: 18
                color: ColorPalette.secondaryText
            }
        }

        ShellMenu {
            id: menu

            y: menuButton.height + Metrics.spacingTiny
            shell: root.shell
        }
    }
}
