import QtQuick
import Brivane.App
import Brivane.Components

// The one main window: onboarding until the user has passed it, then the modules.
Window {
    id: root

    required property BrivaneApp app

    objectName: "mainWindow"
    width: 1200
    height: 750
    minimumWidth: 1000
    minimumHeight: 650
    visible: true
    title: "Brivane"
    color: ColorPalette.windowBackground

    Loader {
        anchors.fill: parent
        focus: true
        sourceComponent: root.app.isOnboarded ? mainView : onboarding
    }

    // Afterwards it is in the menu.
    Shortcut {
        enabled: !root.app.isOnboarded
        sequence: "Ctrl+Q"
        onActivated: root.app.quit()
    }

    Component {
        id: mainView

        MainView {
            focus: true
            shell: root.app.shell
        }
    }

    Component {
        id: onboarding

        OnboardingPage {
            focus: true
            onFinished: root.app.isOnboarded = true
        }
    }
}
