import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Brivane.Components

// A row of a KeyboardList: check box, symbol, title over subtitle, badges, details, size and controls, each
// where it is wanted. A click puts the keyboard on it and tells of it; the right button opens its menu.
//
// What acts on a row takes the entry that signals bring along: what was here when the button went down. A
// change of the model may put another entry here before it comes up.
T.ItemDelegate {
    id: root

    required property int index
    property var entry: index
    property AppMenu menu: null
    property string title
    property color titleColor: ColorPalette.primaryText
    property bool hasStrongTitle: false
    property string subtitle
    property color subtitleColor: ColorPalette.secondaryText
    property bool wrapsSubtitle: false // for what has to be read in full: the row grows with it
    property Component mark: null // at the end of the subtitle's line
    property string kind // of the entry, before the subtitle
    property color kindColor: ColorPalette.purple
    property string trailingText
    property color trailingColor: ColorPalette.primaryText
    property int trailingWidth: 76
    property bool hasCheckBox: false
    property bool isCheckBoxApart: false // it is a control of its own, which `ticked` tells of
    property bool hasRoundCheckBox: false
    property int checkState: Qt.Unchecked
    property bool isSelected: false
    property bool isLit: hovered
    property color tint: ColorPalette.accent
    property color selectedFill: ColorPalette.faded(tint, 0.22)
    property real cornerRadius: implicitHeight > 40 ? Metrics.radiusMedium : Metrics.radiusSmall

    property alias leading: leadingSlot.data
    property alias badges: badgeSlot.data
    default property alias details: detailSlot.data
    property alias trailing: trailingSlot.data

    readonly property bool isCurrent: ListView.isCurrentItem && ListView.view.activeFocus
    readonly property bool hasMenu: menu !== null && menu.visible && menu.entry === entry
    property var pressedEntry

    signal activated(entry: var)
    signal ticked(entry: var)

    // Where an entry is listed by now. To be overridden where rows come and go.
    function rowOf(what: var): int {
        return index;
    }

    function openMenu(x: real, y: real): bool {
        menu?.openFor(entry, root, x, y);
        return menu !== null;
    }

    implicitHeight: wrapsSubtitle ? Math.max(52, words.implicitHeight + 20) : subtitle.length > 0 || kind.length > 0 ? 52 : 36
    leftPadding: Metrics.spacingMedium
    rightPadding: Metrics.spacingSmall
    hoverEnabled: true
    focusPolicy: Qt.NoFocus // the list gives it the keyboard, which is the one stop
    text: title
    onPressed: pressedEntry = entry
    onClicked: {
        ListView.view.currentIndex = rowOf(pressedEntry);
        ListView.view.forceActiveFocus();
        activated(pressedEntry);
    }

    Accessible.role: Accessible.ListItem
    Accessible.name: title + (kind.length > 0 ? ", " + kind : "") + (trailingText.length > 0 ? ", " + trailingText : "")
    Accessible.description: subtitle
    Accessible.selectable: true
    Accessible.selected: isSelected || isCurrent
    Accessible.focusable: true
    Accessible.focused: isCurrent
    Accessible.onPressAction: activated(entry)
    Accessible.onToggleAction: isCheckBoxApart ? ticked(entry) : activated(entry)
    // The template overwrites these, once, as soon as somebody listens.
    Accessible.checkable: hasCheckBox
    Accessible.checked: checkState === Qt.Checked
    Accessible.checkStateMixed: checkState === Qt.PartiallyChecked
    Accessible.onCheckableChanged: {
        if (Accessible.checkable !== hasCheckBox)
            Accessible.checkable = Qt.binding(() => root.hasCheckBox);
    }
    Accessible.onCheckedChanged: {
        if (Accessible.checked !== (checkState === Qt.Checked))
            Accessible.checked = Qt.binding(() => root.checkState === Qt.Checked);
    }

    Item { // an item of its own: on the row itself the buttons would take part
        anchors.fill: parent

        TapHandler {
            acceptedButtons: Qt.RightButton
            onPressedChanged: {
                if (!pressed)
                    return;
                root.ListView.view.currentIndex = root.index;
                root.openMenu(point.position.x, point.position.y);
            }
        }
    }

    background: Rectangle {
        radius: root.cornerRadius
        color: {
            if (root.isSelected)
                return root.selectedFill;
            if (root.isLit || root.hasMenu)
                return ColorPalette.faded("white", 0.05);
            return root.isCurrent ? ColorPalette.faded("white", 0.03) : "transparent";
        }
        border.width: root.isCurrent ? 2 : 0
        border.color: ColorPalette.faded(ColorPalette.accent, 0.8)
    }

    RowLayout {
        anchors.fill: parent
        anchors.leftMargin: root.leftPadding
        anchors.rightMargin: root.rightPadding
        spacing: root.implicitHeight > 40 ? Metrics.spacingMedium : Metrics.spacingSmall

        Loader {
            active: root.hasCheckBox
            visible: active
            sourceComponent: root.isCheckBoxApart ? checkBox : checkMark

            Component {
                id: checkMark

                CheckMark {
                    checkState: root.checkState
                    tint: root.tint
                    isLit: root.isLit
                    isRound: root.hasRoundCheckBox
                }
            }
            Component {
                id: checkBox

                RowCheckBox {
                    objectName: "rowCheckBox"
                    entry: root.entry
                    checkState: root.checkState
                    tint: root.tint
                    isRound: root.hasRoundCheckBox
                    onChosen: entry => root.ticked(entry)
                }
            }
        }
        RowLayout {
            id: leadingSlot

            Layout.fillWidth: false
            visible: children.length > 0
        }
        ColumnLayout {
            id: words

            spacing: 1

            AppText {
                id: titleText

                Layout.fillWidth: true
                horizontalAlignment: Text.AlignLeft // whichever way a name is written
                elide: Text.ElideMiddle
                text: root.title
                textStyle: root.hasStrongTitle ? AppText.Style.BodyStrong : AppText.Style.Body
                color: root.titleColor
                Accessible.ignored: true

                WholeText {
                    whole: titleText
                    isWanted: root.hovered
                }
            }
            Loader {
                Layout.fillWidth: true
                active: root.subtitle.length > 0 || root.kind.length > 0
                visible: active
                sourceComponent: RowLayout {
                    spacing: Metrics.spacingSmall

                    AppText {
                        visible: text.length > 0
                        text: root.kind
                        textStyle: AppText.Style.Callout
                        color: root.kindColor
                        Accessible.ignored: true
                    }
                    AppText {
                        id: subtitleText

                        Layout.fillWidth: true
                        horizontalAlignment: Text.AlignLeft
                        elide: root.wrapsSubtitle ? Text.ElideNone : Text.ElideMiddle
                        wrapMode: root.wrapsSubtitle ? Text.Wrap : Text.NoWrap
                        text: root.subtitle
                        textStyle: AppText.Style.Callout
                        color: root.subtitleColor
                        Accessible.ignored: true

                        WholeText {
                            whole: subtitleText
                            isWanted: root.hovered
                        }
                    }
                    Loader {
                        active: root.mark !== null
                        visible: active
                        sourceComponent: root.mark
                    }
                }
            }
        }
        RowLayout {
            id: badgeSlot

            Layout.fillWidth: false
            visible: children.length > 0
            spacing: Metrics.spacingTiny
        }
        RowLayout {
            id: detailSlot

            Layout.fillWidth: false
            visible: children.length > 0
            spacing: Metrics.spacingSmall
        }
        AppText {
            Layout.preferredWidth: root.trailingWidth
            visible: text.length > 0
            horizontalAlignment: Text.AlignRight
            text: root.trailingText
            color: root.trailingColor
            Accessible.ignored: true
        }
        RowLayout {
            id: trailingSlot

            Layout.fillWidth: false
            visible: children.length > 0
            spacing: parent.spacing
        }
    }
}
