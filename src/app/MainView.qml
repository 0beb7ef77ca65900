import QtQuick
import Brivane.App
import Brivane.Components

// What the window holds once the onboarding is over: the sidebar, and the module beside it.
FocusScope {
    id: root

    required property ShellViewModel shell

    // How far the sidebar is in: 0 while a cleaning session has the window.
    property real presence: shell.isNavigationShown ? 1 : 0
    readonly property int sidebarWidth: 224

    objectName: "mainView"
    implicitWidth: 900
    implicitHeight: 550

    Behavior on presence {
        NumberAnimation { duration: Motion.slow; easing.type: Easing.InOutCubic }
    }

    Rectangle {
        anchors.fill: parent
        color: ColorPalette.windowBackground
    }

    Loader {
        id: sidebar

        x: (root.presence - 1) * width
        width: root.sidebarWidth + 1
        height: parent.height
        opacity: root.presence
        active: root.presence > 0
        enabled: root.shell.isNavigationShown

        sourceComponent: Item {
            Sidebar {
                width: root.sidebarWidth
                height: parent.height
                shell: root.shell
            }
            Rectangle {
                objectName: "sidebarSeparator"
                anchors.right: parent.right
                width: 1
                height: parent.height
                color: ColorPalette.hairline
            }
        }
    }

    Loader {
        id: module

        objectName: "module"
        asynchronous: true // over several frames, so that none of them is late
        anchors.top: parent.top
        anchors.bottom: parent.bottom
        anchors.left: parent.left
        anchors.leftMargin: Math.round(root.presence * sidebar.width)
        anchors.right: parent.right
        focus: true
        onLoaded: (item as Item).focus = true

        // A screen is made anew whenever its module is entered.
        function enter(): void {
            setSource(root.shell.screen, root.shell.screenProperties);
        }

        Component.onCompleted: enter()

        Connections {
            target: root.shell

            function onScreenEntered(): void {
                module.enter();
            }

            // Keys must not go to a screen that was left, however long the next one takes to open.
            function onAppModeChanged(): void {
                if (String(root.shell.screen).length === 0)
                    module.source = "";
            }

            // The keyboard must not go with the sidebar.
            function onNavigationShownChanged(): void {
                if (!root.shell.isNavigationShown)
                    module.forceActiveFocus();
            }
        }
    }

    Instantiator {
        model: root.shell.menu

        Shortcut {
            required property string shortcut
            required property string notification

            enabled: shortcut.length > 0
            sequence: shortcut
            context: Qt.ApplicationShortcut // also while a question is asked: Qt would hold them back
            autoRepeat: false
            onActivated: root.shell.post(notification)
        }
    }
}
