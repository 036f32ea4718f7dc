import QtQuick
import Vesk.Controls
import Vesk.Shell

// What can be done with the session that is shown.
Menu {
    id: menu

    required property SessionHeader header
    // The button that it hangs from.
    required property Item anchor

    parent: anchor
    x: anchor.width - width
    y: anchor.height + 4
    Component.onCompleted: open()

    MenuRow {
        text: "제목 바꾸기…"
        iconName: "edit"
        onTriggered: menu.header.renameTriggered()
    }
    MenuLine {}
    MenuRow {
        text: "세션 닫기"
        iconName: "close"
        keys: "Ctrl W"
        onTriggered: menu.header.closeTriggered()
    }
}
