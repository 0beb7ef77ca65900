import QtQuick
import QtQuick.Layouts
import Brivane.Components
import Brivane.Cleaner

// The module of Smart Clean: a welcome, then the categories with the items of one of them, and what removes.
FocusScope {
    id: root

    required property CleanerViewModel viewModel

    readonly property bool hasPanes: !viewModel.isWelcome && !viewModel.isClean

    // What has the keyboard may go: a button, the last row. It is kept on something that shows.
    readonly property Item keyboard: visible && activeFocus ? Window.activeFocusItem : null
    readonly property bool isKeyboardLost: keyboard !== null && (keyboard === root || !keyboard.visible || !keyboard.enabled)
    readonly property var keyboardSupport: [isKeyboardLost, viewModel.isWelcome, viewModel.isClean]

    function keepKeyboard(): void {
        if (!isKeyboardLost)
            return;
        if (viewModel.isWelcome)
            welcome.forceActiveFocus(Qt.TabFocusReason);
        else if (viewModel.isClean)
            header.takeFocus();
        else
            list.forceActiveFocus(Qt.TabFocusReason);
    }

    onKeyboardSupportChanged: Qt.callLater(keepKeyboard) // qmllint disable

    objectName: "cleanerView"
    Accessible.role: Accessible.Grouping
    Accessible.name: qsTr("Smart Clean")
    Component.onCompleted: viewModel.enter()

    EmptyPage {
        id: welcome

        objectName: "cleanerWelcome"
        anchors.fill: parent
        visible: root.viewModel.isWelcome
        focus: visible
        icon: "sparkles"
        tint: ColorPalette.cyan
        title: qsTr("Smart Clean")
        text: qsTr("Automatically find and remove junk files,\ncaches, logs and other space wasters.")
        buttonLabel: qsTr("Scan for Junk")
        buttonIcon: "magnifyingglass"
        buttonColors: [ColorPalette.blue, ColorPalette.indigo]
        footer: qsTr("Scanned locations:\nCaches · Logs · Downloads · Xcode · Homebrew · Mail · iOS Backups")
        onPressed: root.viewModel.scanAll()
    }

    ColumnLayout {
        anchors.fill: parent
        visible: !root.viewModel.isWelcome
        spacing: 0

        CleanerHeader {
            id: header

            Layout.fillWidth: true
            Layout.margins: Metrics.spacingHuge
            Layout.bottomMargin: Metrics.spacingLarge
            viewModel: root.viewModel
        }
        EmptyPage {
            objectName: "cleanerClean"
            Layout.fillWidth: true
            Layout.fillHeight: true
            visible: root.viewModel.isClean
            icon: "checkmark.circle.fill"
            tint: ColorPalette.success
            title: qsTr("Nothing to Clean")
            text: qsTr("There is no junk in the places that Smart Clean looks at.")
        }
        RowLayout {
            Layout.fillWidth: true
            Layout.fillHeight: true
            visible: root.hasPanes
            spacing: 0

            CleanerCategoryList {
                id: list

                Layout.fillHeight: true
                Layout.preferredWidth: Math.min(320, Math.max(272, root.width * 0.36))
                Layout.leftMargin: Metrics.spacingMedium
                focus: true
                viewModel: root.viewModel
                onItemsWanted: detail.takeFocus()
            }
            Rectangle {
                Layout.fillHeight: true
                implicitWidth: 1
                color: ColorPalette.hairline
            }
            CleanerDetailPane {
                id: detail

                Layout.fillWidth: true
                Layout.fillHeight: true
                viewModel: root.viewModel
                onBackWanted: list.forceActiveFocus(Qt.TabFocusReason)
            }
        }
        ProgressPanel {
            id: progress

            function announce(): void {
                if (visible)
                    ScreenReader.alert(progress);
            }

            objectName: "cleanerProgress"
            onVisibleChanged: Qt.callLater(announce) // qmllint disable
            onCanStopChanged: Qt.callLater(announce) // qmllint disable
            Layout.fillWidth: true
            Layout.leftMargin: Metrics.spacingHuge
            Layout.rightMargin: Metrics.spacingHuge
            Layout.topMargin: Metrics.spacingMedium
            Layout.bottomMargin: Metrics.spacingMedium
            visible: root.viewModel.isCleaning
            text: root.viewModel.progressText
            detail: root.viewModel.progressDetail
            fraction: root.viewModel.progressFraction
            canStop: !root.viewModel.isStopping
            onStopped: root.viewModel.stopCleaning()
        }
        CleanerBottomBar {
            Layout.fillWidth: true
            visible: root.hasPanes
            viewModel: root.viewModel
        }
    }

    CleanerConfirmDialog {
        viewModel: root.viewModel
    }
    CleanerResultDialog {
        viewModel: root.viewModel
    }

    Shortcut {
        sequences: [StandardKey.Find]
        enabled: root.hasPanes
        onActivated: detail.focusFilter()
    }
}
