import QtQuick
import QtQuick.Layouts
import Brivane.Components
import Brivane.Core
import Brivane.Removal

// The module of the quarantine: what it holds, and the ways back and out.
FocusScope {
    id: root

    required property QuarantineViewModel viewModel

    readonly property bool isEmpty: viewModel.itemCount === 0
    // Days may have gone by since somebody looked.
    readonly property bool isLookedAt: Window.active

    // What has the keyboard may go: the banner, a bar, the last row. It is kept on something that shows.
    readonly property Item keyboard: visible && activeFocus ? Window.activeFocusItem : null
    readonly property bool isKeyboardLost: keyboard !== null && (keyboard === root || !keyboard.visible)
    readonly property var keyboardSupport: [isKeyboardLost, isEmpty, viewModel.isReadOnly]

    function keepKeyboard(): void {
        if (!isKeyboardLost)
            return;
        if (!isEmpty)
            list.forceActiveFocus(Qt.TabFocusReason);
        else if (viewModel.isReadOnly)
            banner.takeFocus();
        else if (keyboard === root)
            root.focus = true; // the next Tab goes on from here
        else
            keyboard.focus = list.focus = false; // a row that goes leaves it to the list
    }

    onKeyboardSupportChanged: Qt.callLater(keepKeyboard) // qmllint disable
    onIsLookedAtChanged: viewModel.refreshDays()

    objectName: "quarantineView"
    Accessible.role: Accessible.Grouping
    Accessible.name: qsTr("Quarantine")
    Component.onCompleted: viewModel.enter()

    EmptyPage {
        anchors.fill: parent
        visible: root.isEmpty
        icon: "checkmark.shield.fill"
        tint: ColorPalette.green
        title: qsTr("Quarantine is Empty")
        text: qsTr("Files cleaned from Smart Clean will appear here.\nYou have 7 days to restore before permanent deletion.")
    }

    QuarantineReadOnlyBanner {
        id: banner

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.margins: Metrics.spacingHuge
        visible: root.viewModel.isReadOnly
        viewModel: root.viewModel
    }

    ColumnLayout {
        anchors.fill: parent
        anchors.topMargin: banner.visible ? banner.height + Metrics.spacingHuge : 0
        visible: !root.isEmpty
        spacing: 0

        QuarantineStatsBar {
            Layout.fillWidth: true
            Layout.margins: Metrics.spacingHuge
            Layout.bottomMargin: Metrics.spacingLarge
            viewModel: root.viewModel
        }
        QuarantineFilterBar {
            id: filterBar

            Layout.fillWidth: true
            Layout.leftMargin: Metrics.spacingHuge
            Layout.rightMargin: Metrics.spacingHuge
            Layout.bottomMargin: Metrics.spacingMedium
            viewModel: root.viewModel
            onFilterEdited: text => list.rearrange(() => root.viewModel.searchText = text)
            onFilterLeft: {
                if (list.count > 0)
                    list.forceActiveFocus(Qt.TabFocusReason);
            }
            onOrderChosen: order => list.rearrange(() => root.viewModel.sortOrder = order)
        }
        ProgressPanel {
            objectName: "quarantineProgress"
            Layout.fillWidth: true
            Layout.leftMargin: Metrics.spacingHuge
            Layout.rightMargin: Metrics.spacingHuge
            Layout.bottomMargin: Metrics.spacingMedium
            visible: root.viewModel.hasProgress
            text: "%1 %2 of %3…".arg(root.viewModel.progressLabel).arg(root.viewModel.progressCompleted)
                .arg(root.viewModel.progressTotal)
            detail: ByteCountFormatter.string(root.viewModel.progressBytes)
            fraction: root.viewModel.progressTotal < 1 ? 0
                : root.viewModel.progressCompleted / root.viewModel.progressTotal
            tint: root.viewModel.progressTint
        }
        QuarantineList {
            id: list

            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.leftMargin: Metrics.spacingMedium
            focus: true
            viewModel: root.viewModel
        }
        QuarantineSelectionBar {
            id: selectionBar

            Layout.fillWidth: true
            visible: root.viewModel.hasSelection
            viewModel: root.viewModel
        }
    }

    ResultToastModifier {
        anchors.bottomMargin: selectionBar.visible ? selectionBar.height : 0
        visibleMessage: root.viewModel.toast.visibleMessage
    }

    ConfirmOverlay {
        objectName: "purgeConfirm"
        asked: root.viewModel.showPurgeConfirm
        icon: "trash.fill"
        tint: ColorPalette.danger
        title: qsTr("Permanently Delete All?")
        text: root.viewModel.purgeMessage
        answers: ConfirmAnswer {
            objectName: "confirmAccept"
            label: qsTr("Delete All")
            style: ConfirmAnswer.Style.Destructive
            onChosen: root.viewModel.confirmPurge()
        }
        onDismissed: root.viewModel.showPurgeConfirm = false
    }
    ConfirmOverlay {
        objectName: "restoreAllConfirm"
        asked: root.viewModel.showRestoreAllConfirm
        icon: "arrow.uturn.backward.circle.fill"
        tint: ColorPalette.blue
        title: qsTr("Restore All Files?")
        text: root.viewModel.restoreAllMessage
        answers: ConfirmAnswer {
            objectName: "confirmAccept"
            label: qsTr("Restore All")
            style: ConfirmAnswer.Style.Prominent
            onChosen: root.viewModel.confirmRestoreAll()
        }
        onDismissed: root.viewModel.showRestoreAllConfirm = false
    }

    Shortcut {
        sequences: [StandardKey.Find]
        enabled: !root.isEmpty
        onActivated: filterBar.focusFilter()
    }
}
