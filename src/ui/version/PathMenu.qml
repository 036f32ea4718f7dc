import QtQuick
import Vesk.Controls

// What can be done with a changed file.
Menu {
    id: menu

    readonly property ChangeRow row: parent as ChangeRow

    signal copyAsked(string text)

    MenuRow {
        text: "경로 복사"
        keys: "Ctrl C"
        onTriggered: menu.copyAsked(menu.row.path)
    }
    MenuRow {
        text: "이름 복사"
        onTriggered: menu.copyAsked(menu.row.name)
    }
}
