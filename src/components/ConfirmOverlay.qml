import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Brivane.Components

// A question over the dimmed window: title, text, whatever else there is to see (its children), and up to
// two answers beside "Cancel". Escape, the dimmed ground and "Cancel" close it without effect; Tab stays
// inside, and begins at the safe answer.
//
// The screen says whether it asks, by `asked`, and takes that back in `onDismissed`, which comes in the
// end whatever was answered.
AppPopup {
    id: root

    property bool asked: false
    property string icon
    property color tint: ColorPalette.accent
    property string title
    property string text
    property string spokenText: text // where it is not what there is to read
    property string cancelLabel: qsTr("Cancel")
    property color cancelColor: ColorPalette.gray // another where there is nothing to cancel
    property list<ConfirmAnswer> answers
    default property alias content: slot.data

    // Three buttons would be too narrow side by side, and so may two be for what they say.
    readonly property bool isStacked: answers.length > 1 || widestAnswer > (availableWidth - Metrics.spacingMedium) / 2
    readonly property real widestAnswer: {
        let widest = cancelButton.implicitWidth;
        for (let index = 0; index < buttons.count; ++index)
            widest = Math.max(widest, buttons.itemAt(index)?.implicitWidth ?? 0);
        return widest;
    }

    signal dismissed()

    function answer(chosen: ConfirmAnswer): void {
        chosen.chosen();
        close();
    }

    parent: T.Overlay.overlay
    x: Math.round((parent.width - width) / 2)
    y: Math.round((parent.height - height) / 2)
    implicitWidth: 460
    implicitHeight: layout.implicitHeight + topPadding + bottomPadding
    padding: Metrics.spacingHuge
    modal: true
    dim: true
    onAskedChanged: asked ? open() : close()
    onAboutToShow: cancelButton.focus = true // from the first key on
    onClosed: dismissed()
    Component.onCompleted: {
        if (asked)
            open();
    }

    T.Overlay.modal: Rectangle {
        color: ColorPalette.faded("black", 0.55)
    }

    enter: Transition {
        NumberAnimation { property: "opacity"; from: 0; to: 1; duration: Motion.standard }
        Spring { property: "scale"; from: 0.94; to: 1; response: 0.3; damping: 0.85 }
    }

    background: PopupPanel {
        radius: Metrics.radiusLarge
        blur: 24
    }

    ColumnLayout {
        id: layout

        anchors.fill: parent
        spacing: Metrics.spacingSmall
        Accessible.role: Accessible.Dialog
        Accessible.name: root.title
        Accessible.description: root.spokenText
        Keys.onUpPressed: scroller.contentY = Math.max(0, scroller.contentY - scroller.step)
        Keys.onDownPressed: scroller.contentY = Math.min(scroller.contentHeight - scroller.height, scroller.contentY + scroller.step)

        // In a low window what there is to read gives way, never the answers.
        Flickable {
            id: scroller

            readonly property real step: interactive ? 40 : 0
            readonly property Item keyboard: Window.activeFocusItem

            // What of it has the keyboard is to be seen.
            function show(item: Item): void {
                let holder = item;
                while (holder && holder !== words)
                    holder = holder.parent;
                if (!holder)
                    return;
                const top = item.mapToItem(words, 0, 0).y;
                const end = Math.min(top + item.height + Metrics.spacingSmall, contentHeight) - height;
                contentY = Math.min(Math.max(contentY, end), Math.max(0, top - Metrics.spacingSmall));
            }

            onKeyboardChanged: show(keyboard)

            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.rightMargin: -Metrics.spacingLarge // where the scroll bar is
            implicitHeight: words.implicitHeight
            contentHeight: words.implicitHeight
            interactive: contentHeight > height
            clip: interactive
            boundsBehavior: Flickable.StopAtBounds
            T.ScrollBar.vertical: AppScrollBar {}

            ColumnLayout {
                id: words

                width: scroller.width - Metrics.spacingLarge
                spacing: Metrics.spacingSmall

                IconTile {
                    Layout.alignment: Qt.AlignHCenter
                    Layout.bottomMargin: Metrics.spacingSmall
                    visible: root.icon.length > 0
                    icon: root.icon
                    tint: root.tint
                    size: 56
                }
                AppText {
                    objectName: "confirmTitle"
                    Layout.fillWidth: true
                    horizontalAlignment: Text.AlignHCenter
                    wrapMode: Text.Wrap
                    text: root.title
                    textStyle: AppText.Style.Title
                    Accessible.ignored: true
                }
                AppText {
                    objectName: "confirmText"
                    Layout.fillWidth: true
                    visible: text.length > 0
                    horizontalAlignment: Text.AlignHCenter
                    wrapMode: Text.Wrap
                    text: root.text
                    color: ColorPalette.secondaryText
                    Accessible.ignored: true
                }
                ColumnLayout {
                    id: slot

                    Layout.fillWidth: true
                    Layout.topMargin: Metrics.spacingSmall
                    visible: children.length > 0
                    spacing: Metrics.spacingSmall
                }
            }
        }
        GridLayout {
            Layout.fillWidth: true
            Layout.topMargin: Metrics.spacingMedium
            columnSpacing: Metrics.spacingMedium
            rowSpacing: Metrics.spacingSmall

            CapsuleActionButton {
                id: cancelButton

                objectName: "confirmCancel"
                Layout.fillWidth: true
                Layout.preferredWidth: 1
                Layout.row: root.isStacked ? root.answers.length : 0
                Layout.column: 0
                large: true
                label: root.cancelLabel
                color: root.cancelColor
                onClicked: root.close()
            }
            Repeater {
                id: buttons

                model: root.answers

                CapsuleActionButton {
                    required property int index
                    required property ConfirmAnswer modelData

                    objectName: modelData.objectName
                    Layout.fillWidth: true
                    Layout.preferredWidth: 1
                    Layout.row: root.isStacked ? index : 0
                    Layout.column: root.isStacked ? 0 : 1
                    enabled: modelData.enabled
                    large: true
                    label: modelData.label
                    icon.name: modelData.icon
                    color: [ColorPalette.gray, root.tint, ColorPalette.danger][modelData.style]
                    onClicked: root.answer(modelData)
                }
            }
        }
    }
}
