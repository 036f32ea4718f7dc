pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Shell

// One pane of sessions: its tabs, the header of the session that is shown, and the session itself.
FocusScope {
    id: pane

    required property Workspace workspace
    required property Projects projects

    readonly property alias tabStrip: tabs
    readonly property alias body: content
    // Not by its type: naming that here would load the whole chat surface before the first frame.
    readonly property var current: {
        const holder = chats.count > 0 ? chats.itemAt(workspace.currentIndex) as SessionHolder : null
        return holder?.chatPane ?? null
    }

    signal auditLogRequested()
    signal renameRequested(string key, string title)

    function focusBody(): void {
        if (current)
            current.focusComposer()
        else
            content.forceActiveFocus()
    }
    function softInterrupt(): void { current?.softInterrupt() }
    function stop(): void { current?.stop() }
    function allowOnce(): void { current?.allowOnce() }
    function allowAlways(): void { current?.allowAlways() }
    function deny(): void { current?.deny() }

    Lazy {
        id: tabs
        width: parent.width
        wanted: pane.workspace.tabs.count > 0
        file: Qt.resolvedUrl("SessionTabs.qml")
        properties: ({ workspace: pane.workspace, focus: true })
    }

    FocusScope {
        id: content

        readonly property bool bare: pane.workspace.currentIndex < 0

        anchors.top: tabs.bottom
        anchors.bottom: parent.bottom
        width: parent.width
        focus: true

        Lazy {
            id: notInstalled
            width: parent.width
            wanted: pane.workspace.agentMissing && !content.bare
            file: Qt.resolvedUrl("NotInstalledBanner.qml")
            properties: ({ workspace: pane.workspace })
        }

        Repeater {
            id: chats
            model: pane.workspace.tabs

            delegate: SessionHolder {
                anchors.top: notInstalled.bottom
                anchors.bottom: content.bottom
                width: content.width
                workspace: pane.workspace
                onRenameTriggered: pane.renameRequested(key, title)
                onAuditLogTriggered: pane.auditLogRequested()
            }
        }

        Lazy {
            anchors.centerIn: parent
            width: Math.min(480, parent.width - 32)
            wanted: content.bare && pane.workspace.agentMissing
            file: Qt.resolvedUrl("NotInstalled.qml")
            properties: ({ workspace: pane.workspace })
        }
        EmptyState {
            readonly property bool ready: pane.workspace.hasProjects

            anchors.centerIn: parent
            visible: content.bare && !pane.workspace.agentMissing
            title: ready ? "열린 세션이 없습니다" : "Vesk"
            text: ready ? "새 세션을 열면 여기에서 에이전트와 대화합니다"
                : "프로젝트 폴더를 이 창에 끌어다 놓아도 됩니다"
            actionText: ready ? "새 세션" : ""
            actionKeys: "Ctrl N"
            onActionTriggered: pane.workspace.newSession()
        }
    }
}
