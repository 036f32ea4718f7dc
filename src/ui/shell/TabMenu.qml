import QtQuick
import Vesk.Controls
import Vesk.Shell

// What can be done with a tab, and where it can go.
Menu {
    id: menu

    required property Workspace workspace
    required property string key
    required property string sessionTitle

    readonly property Panes panes: workspace.panes

    signal renameRequested(string key, string title)

    function split(side: int): void {
        workspace.select(key)
        workspace.splitCurrent(side)
    }

    MenuRow {
        text: "제목 바꾸기…"
        iconName: "edit"
        onTriggered: menu.renameRequested(menu.key, menu.sessionTitle)
    }
    MenuLine {}
    MenuRow {
        text: "오른쪽으로 나누기"
        iconName: "split-right"
        keys: "Ctrl \\"
        enabled: menu.panes.canSplit(menu.key, Panes.Right)
        onTriggered: menu.split(Panes.Right)
    }
    MenuRow {
        text: "아래로 나누기"
        iconName: "split-down"
        keys: "Ctrl Shift \\"
        enabled: menu.panes.canSplit(menu.key, Panes.Below)
        onTriggered: menu.split(Panes.Below)
    }
    MenuLine {}
    TabMoveRow {
        panes: menu.panes
        key: menu.key
        text: "왼쪽 칸으로 옮기기"
        keys: "Alt Shift ←"
        iconName: "arrow-left"
        side: Panes.Left
    }
    TabMoveRow {
        panes: menu.panes
        key: menu.key
        text: "오른쪽 칸으로 옮기기"
        keys: "Alt Shift →"
        iconName: "arrow-right"
        side: Panes.Right
    }
    TabMoveRow {
        panes: menu.panes
        key: menu.key
        text: "위 칸으로 옮기기"
        keys: "Alt Shift ↑"
        iconName: "arrow-up"
        side: Panes.Above
    }
    TabMoveRow {
        panes: menu.panes
        key: menu.key
        text: "아래 칸으로 옮기기"
        keys: "Alt Shift ↓"
        iconName: "arrow-down"
        side: Panes.Below
    }
    TabShiftRow {
        panes: menu.panes
        key: menu.key
        text: "탭을 왼쪽으로"
        keys: "Ctrl Shift PgUp"
        iconName: "chevron-left"
        places: -1
    }
    TabShiftRow {
        panes: menu.panes
        key: menu.key
        text: "탭을 오른쪽으로"
        keys: "Ctrl Shift PgDn"
        iconName: "chevron-right"
        places: 1
    }
    MenuLine {}
    MenuRow {
        text: "세션 닫기"
        iconName: "close"
        keys: "Ctrl W"
        onTriggered: menu.workspace.requestClose(menu.key)
    }
}
