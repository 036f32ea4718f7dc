import QtQuick
import Vesk.Chat
import Vesk.Shell

// One session as a tab shows it: its header and its conversation.
FocusScope {
    id: session

    required property SessionHolder holder

    focus: true
    Component.onCompleted: holder.chatPane = conversation

    SessionHeader {
        id: header
        width: parent.width
        alias: session.holder.alias
        path: session.holder.path
        lane: session.holder.lane
        colorHex: session.holder.colorHex
        backgroundCount: conversation.backgroundCount
        backgroundShown: session.holder.workspace.backgroundShown
        onBackgroundTriggered: session.holder.workspace.backgroundShown = !backgroundShown
        onRenameTriggered: session.holder.renameTriggered()
        onCloseTriggered: session.holder.workspace.requestClose(session.holder.key)
    }
    ChatPane {
        id: conversation
        anchors.top: header.bottom
        anchors.bottom: parent.bottom
        width: parent.width
        focus: true
        chat: session.holder.chat
        active: session.holder.current && session.holder.workspace.windowActive
        onOpenBackground: session.holder.workspace.backgroundShown = true
        onOpenAuditLog: session.holder.auditLogTriggered()
    }
}
