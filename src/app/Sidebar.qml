import QtQuick
import QtQuick.Templates as T
import Brivane.App
import Brivane.Components

// The modules, and what they add to the sidebar. One stop of the Tab key: Up, Down, Home, End and first
// letters move, Enter and Space choose. What does not fit scrolls; the footers of the parts stay in view.
FocusScope {
    id: root

    required property ShellViewModel shell

    // What has the keyboard in this window.
    readonly property Item focused: Window.activeFocusItem

    // The rows below `item` in the order of the screen.
    function rowsIn(item: Item): var {
        let rows = [];
        for (let index = 0; index < item.children.length; ++index) {
            const child = item.children[index];
            if (child.visible)
                rows = rows.concat(child instanceof SidebarRow ? [child] : rowsIn(child));
        }
        return rows;
    }

    // From the row with the keyboard; further than to the first and the last it does not go.
    function step(distance: real): bool {
        const rows = rowsIn(content);
        const from = rows.indexOf(focused);
        if (from >= 0)
            rows[Math.max(0, Math.min(rows.length - 1, from + distance))].forceActiveFocus(Qt.TabFocusReason);
        return from >= 0;
    }

    // To the next row that begins like that.
    function stepTo(text: string): bool {
        const rows = rowsIn(content);
        const from = rows.indexOf(focused);
        const next = rows.slice(from + 1).concat(rows.slice(0, from + 1))
            .find(row => row.text.toLowerCase().startsWith(text.toLowerCase()));
        if (from >= 0)
            next?.forceActiveFocus(Qt.TabFocusReason);
        return from >= 0 && next !== undefined;
    }

    function handleKey(event: KeyEvent): bool {
        switch (event.key) {
        case Qt.Key_Up: return step(-1);
        case Qt.Key_Down: return step(1);
        case Qt.Key_Home:
        case Qt.Key_PageUp: return step(-Infinity);
        case Qt.Key_End:
        case Qt.Key_PageDown: return step(Infinity);
        }
        const isText = event.text > " " && !(event.modifiers & (Qt.ControlModifier | Qt.AltModifier));
        return isText && stepTo(event.text);
    }

    function reveal(row: Item): void {
        const top = row.mapToItem(flickable.contentItem, 0, 0).y;
        const room = Metrics.spacingHuge;
        if (top - room < flickable.contentY)
            flickable.contentY = Math.max(0, top - room);
        else if (top + row.height + room > flickable.contentY + flickable.height)
            flickable.contentY = Math.min(flickable.contentHeight, top + row.height + room) - flickable.height;
    }

    objectName: "sidebar"
    Keys.onPressed: event => event.accepted = handleKey(event)
    onFocusedChanged: {
        if (focused instanceof SidebarRow)
            reveal(focused);
    }

    Rectangle {
        anchors.fill: parent
        color: ColorPalette.sidebarBackground
    }

    HoverHandler {
        id: pointer
    }

    SidebarHeader {
        id: header

        width: parent.width
        shell: root.shell
    }

    Flickable {
        id: flickable

        objectName: "sidebarFlickable"
        anchors.top: header.bottom
        anchors.bottom: footer.top
        width: parent.width
        contentWidth: width
        contentHeight: content.height
        boundsBehavior: Flickable.StopAtBounds
        clip: true

        // Only while somebody is about to use it: the fading edges tell that there is more.
        T.ScrollBar.vertical: AppScrollBar {
            opacity: pointer.hovered || flickable.moving || pressed ? 1 : 0
            Behavior on opacity { NumberAnimation { duration: Motion.standard } }
        }

        Column {
            id: content

            x: Metrics.spacingSmall
            width: flickable.width - 2 * Metrics.spacingSmall
            bottomPadding: Metrics.spacingSmall

            Item {
                width: parent.width
                height: modeColumn.height
                Accessible.role: Accessible.List
                Accessible.name: qsTr("Modules")

                Rectangle { // under the row of the module on screen
                    id: highlight

                    property SidebarModeRow current

                    y: current ? current.y + current.row.y : 0
                    width: parent.width
                    height: current ? current.row.height : 0
                    radius: Metrics.radiusSmall + 1
                    color: current ? ColorPalette.faded(current.accent, 0.17) : "transparent"

                    Behavior on y {
                        enabled: highlight.current !== null
                        Spring {}
                    }
                    Behavior on color { ColorAnimation { duration: Motion.standard } }
                }

                Column {
                    id: modeColumn

                    width: parent.width

                    Repeater {
                        id: modeRows

                        model: root.shell.modes

                        SidebarModeRow {
                            width: modeColumn.width
                            onChosen: root.shell.appMode = mode
                            onHoverChanged: isHovered => root.shell.setHovered(mode, isHovered)
                            onIsCurrentChanged: {
                                if (isCurrent)
                                    highlight.current = this;
                            }
                            Component.onCompleted: {
                                if (isCurrent)
                                    highlight.current = this;
                            }
                        }
                    }
                }
            }

            Repeater {
                id: parts

                model: root.shell.sidebarParts

                Loader {
                    id: part

                    required property var modelData

                    readonly property Component footer: (item as SidebarPart)?.footer ?? null

                    width: content.width
                    Component.onCompleted: setSource(modelData.source, modelData.properties)
                }
            }
        }
    }

    SidebarFade {
        anchors.top: flickable.top
        width: parent.width
        atTop: true
        visible: !flickable.atYBeginning
    }
    SidebarFade {
        anchors.bottom: flickable.bottom
        width: parent.width
        visible: !flickable.atYEnd
    }

    Column {
        id: footer

        anchors.bottom: parent.bottom
        width: parent.width

        Repeater {
            model: parts.count

            Loader {
                required property int index

                width: footer.width
                sourceComponent: (parts.itemAt(index) as Loader)?.footer ?? null
            }
        }
    }
}
