pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Shell

// The panes of sessions. A session's view lies above the panes, at the place of its own: when it goes to another
// pane it only moves, and its scroll position, its draft and what it is writing stay.
FocusScope {
    id: region

    required property Workspace workspace
    required property Projects projects

    readonly property Item tabStrip: {
        const strip = (frames.count > 0 ? frames.itemAt(workspace.panes.focusedRow) as PaneFrame : null)?.tabStrip
        return strip?.visible ? strip : content
    }
    readonly property alias body: content
    readonly property SessionHolder currentHolder: chats.count > 0
        ? chats.itemAt(workspace.tabs.rowOf(workspace.currentKey)) as SessionHolder : null
    // Not by its type: naming that here would load the whole chat surface before the first frame.
    readonly property var current: currentHolder?.chatPane ?? null
    // The person has pointed at something in the pane that is now the current one; the focus is where that put it.
    property bool pointedAt: false

    signal resumeRequested()
    signal auditLogRequested()
    signal renameRequested(string key, string title)

    function focusBody(): void {
        if (current)
            current.focusComposer()
        else
            tabStrip.forceActiveFocus()
    }
    // After another session became the current one.
    function followCurrent(): void {
        if (!pointedAt || !(currentHolder?.activeFocus || tabStrip.activeFocus))
            focusBody()
        pointedAt = false
    }
    function softInterrupt(): void { current?.softInterrupt() }
    function stop(): void { current?.stop() }
    function allowOnce(): void { current?.allowOnce() }
    function allowAlways(): void { current?.allowAlways() }
    function deny(): void { current?.deny() }

    Lazy {
        id: notInstalled
        width: parent.width
        wanted: region.workspace.agentMissing && region.workspace.tabs.count > 0
        file: Qt.resolvedUrl("NotInstalledBanner.qml")
        properties: ({ workspace: region.workspace })
    }

    Item {
        id: area

        readonly property size extent: Qt.size(width, height)

        anchors.top: notInstalled.bottom
        anchors.bottom: parent.bottom
        width: parent.width
        onExtentChanged: region.workspace.panes.area = extent

        FocusScope {
            id: content
            anchors.fill: parent
            focus: true

            Repeater {
                id: frames
                model: region.workspace.panes

                delegate: PaneFrame {
                    workspace: region.workspace
                    onEntered: region.pointedAt = true
                    onResumeRequested: region.resumeRequested()
                    onTabMenuRequested: (tab, key, title) => menu.open(tab, key, title)
                    onTabDragged: scenePoint => area.dragTo(scenePoint)
                }
            }
            Repeater {
                id: chats
                model: region.workspace.tabs

                delegate: SessionHolder {
                    workspace: region.workspace
                    onRenameTriggered: region.renameRequested(key, title)
                    onAuditLogTriggered: region.auditLogRequested()
                    onPointedAt: {
                        if (!current) {
                            region.pointedAt = true
                            region.workspace.select(key)
                        }
                    }
                }
            }
        }

        Lazy {
            anchors.fill: parent
            wanted: region.workspace.panes.count > 1
            file: Qt.resolvedUrl("PaneSplitters.qml")
            properties: ({ panes: region.workspace.panes })
        }

        // The keyboard goes through one pane after the other, in each from its tabs to its composer.
        function arrange(): void {
            let last = null
            for (let row = 0; row < frames.count; ++row) {
                const frame = frames.itemAt(row) as PaneFrame
                ReadingOrder.follow(frame, last)
                last = frame
                for (let session = 0; session < chats.count; ++session) {
                    const chat = chats.itemAt(session) as SessionHolder
                    if (region.workspace.panes.paneOf(chat?.key ?? "") === frame?.pane) {
                        ReadingOrder.follow(chat, last)
                        last = chat
                    }
                }
            }
        }
        Connections {
            target: region.workspace.panes
            function onTreeChanged(): void { settled.restart() }
        }
        // Once the repeaters have followed.
        Timer {
            id: settled
            interval: 0
            onTriggered: area.arrange()
        }

        function dragTo(scenePoint: point): void {
            const drag = region.workspace.tabDrag
            drag.moveTo(area.mapFromItem(null, scenePoint), Theme.px(36))
            for (let row = 0; drag.stripPane > 0 && row < frames.count; ++row) {
                const frame = frames.itemAt(row) as PaneFrame
                if (frame?.pane === drag.stripPane)
                    frame.aim(drag)
            }
        }

        Lazy {
            anchors.fill: parent
            wanted: region.workspace.tabDrag.active
            file: Qt.resolvedUrl("TabDragLayer.qml")
            properties: ({ drag: region.workspace.tabDrag })
        }
    }

    Loader {
        id: menu

        property Item tab

        function open(tab: Item, key: string, title: string): void {
            menu.tab = tab
            setSource("TabMenu.qml", { workspace: region.workspace, key: key, sessionTitle: title })
        }

        onLoaded: {
            item.parent = region
            item.closed.connect(() => {
                if (menu) // not while the window goes
                    menu.source = ""
            })
            item.renameRequested.connect((key, title) => region.renameRequested(key, title))
            item.popup(region, region.mapFromItem(tab, 0, 0).x, region.mapFromItem(tab, 0, tab.height).y)
        }
    }
}
