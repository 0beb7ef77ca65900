import QtQuick
import QtQuick.Templates as T
import Brivane.App
import Brivane.Components
import Brivane.Scanner

// The modules, the volumes and what the last scan has found. One stop of the Tab key: Up and Down move,
// Enter and Space choose. What does not fit scrolls; the scan's two buttons stay in view.
FocusScope {
    id: root

    required property ShellViewModel shell

    readonly property ScanViewModel scan: shell.scanViewModel

    // All rows in the order of the screen.
    function rowAt(index: int): SidebarRow {
        const modes = modeRows.count;
        if (index < modes)
            return (modeRows.itemAt(index) as SidebarModeRow).row;
        return (volumeRows.itemAt(index - modes) as SidebarVolumeRow).row;
    }

    function step(from: SidebarRow, distance: int): void {
        const count = modeRows.count + volumeRows.count;
        for (let index = 0; index < count; ++index) {
            if (rowAt(index) === from) {
                reach(Math.max(0, Math.min(count - 1, index + distance)));
                return;
            }
        }
    }

    function reach(index: int): void {
        rowAt(index).forceActiveFocus(Qt.TabFocusReason);
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
                            onMoved: distance => root.step(row, distance)
                            onReached: root.reveal(row)
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

            SidebarHeading {
                width: parent.width
                text: qsTr("Volumes")
                visible: volumeRows.count > 0
            }
            Column {
                id: volumeColumn

                width: parent.width
                Accessible.role: Accessible.List
                Accessible.name: qsTr("Volumes")

                Repeater {
                    id: volumeRows

                    model: root.scan.volumes

                    SidebarVolumeRow {
                        width: volumeColumn.width
                        isCurrent: mountPoint === root.scan.selectedMountPoint
                        onChosen: root.scan.selectVolume(mountPoint)
                        onMoved: distance => root.step(row, distance)
                        onReached: root.reveal(row)
                    }
                }
            }

            SidebarInfo {
                width: parent.width
                stats: root.scan.stats
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

    SidebarFooter {
        id: footer

        anchors.bottom: parent.bottom
        width: parent.width
        scan: root.scan
    }
}
