import QtQuick
import Vesk.Controls

// What can be done with a commit.
Menu {
    id: menu

    readonly property CommitRow row: parent as CommitRow

    signal copyAsked(string text)

    MenuRow {
        text: "번호 복사"
        keys: "Ctrl C"
        onTriggered: menu.copyAsked(menu.row.hash)
    }
    MenuRow {
        text: "제목 복사"
        onTriggered: menu.copyAsked(menu.row.subject)
    }
}
