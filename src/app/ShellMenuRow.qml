import QtQuick
import QtQuick.Templates as T
import Brivane.Components

// An item of the application menu, below its group's heading where it is the first of one.
Item {
    id: root

    required property int index
    required property string title
    required property string heading
    required property string keys
    required property string notification

    property alias row: button

    signal chosen
    signal moved(distance: int)

    implicitHeight: button.y + button.height

    Rectangle {
        y: Metrics.spacingTiny
        width: parent.width
        height: 1
        visible: label.visible && root.index > 0
        color: ColorPalette.hairline
    }
    SidebarHeading {
        id: label

        y: root.index > 0 ? Metrics.spacingTiny : -Metrics.spacingTiny
        visible: root.heading.length > 0
        text: root.heading
    }

    T.MenuItem {
        id: button

        // The key that opened the menu may still be held down.
        function chooseByKey(event: KeyEvent): void {
            if (!event.isAutoRepeat)
                clicked();
        }

        objectName: "menu-" + root.title
        y: label.visible ? label.y + label.height : 0
        width: parent.width
        implicitHeight: 28
        leftPadding: Metrics.spacingSmall
        rightPadding: Metrics.spacingSmall
        hoverEnabled: true
        focusPolicy: Qt.StrongFocus
        text: root.title
        Accessible.name: text
        Accessible.onPressAction: clicked()
        Accessible.description: root.keys
        onClicked: root.chosen()
        Keys.onReturnPressed: event => chooseByKey(event)
        Keys.onEnterPressed: event => chooseByKey(event)
        Keys.onUpPressed: root.moved(-1)
        Keys.onDownPressed: root.moved(1)

        background: Rectangle {
            radius: Metrics.radiusSmall
            color: ColorPalette.faded("white", button.down ? 0.14 : button.hovered ? 0.08 : 0)
        }
        FocusRing {
            gap: -2
            shown: button.visualFocus
        }

        contentItem: Item {
            AppText {
                anchors.left: parent.left
                anchors.verticalCenter: parent.verticalCenter
                text: root.title
                Accessible.ignored: true
            }
            AppText {
                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                text: root.keys
                textStyle: AppText.Style.Caption
                Accessible.ignored: true
            }
        }
    }
}
