import QtQuick
import Vesk.Controls
import Vesk.Shell

// What can be done with a session from the sidebar.
Menu {
    id: menu

    required property string key
    required property string sessionTitle
    required property SessionList panel

    MenuRow {
        text: "제목 바꾸기…"
        iconName: "edit"
        keys: "F2"
        onTriggered: menu.panel.renameRequested(menu.key, menu.sessionTitle)
    }
    MenuLine {}
    MenuRow {
        text: "세션 닫기"
        iconName: "close"
        onTriggered: menu.panel.workspace.requestClose(menu.key)
    }
}
