import QtQuick
import Vesk.Controls
import Vesk.Version

// What can be copied of a commit and of the file that is shown.
Menu {
    id: menu

    required property CommitDetail detail

    signal copyAsked(string text)

    MenuRow {
        text: "번호 복사"
        enabled: !menu.detail.isWorkTree
        onTriggered: menu.copyAsked(menu.detail.hash)
    }
    MenuRow {
        text: "제목과 본문 복사"
        enabled: !menu.detail.isWorkTree
        onTriggered: menu.copyAsked(menu.detail.body.length > 0 ? menu.detail.title + "\n\n" + menu.detail.body : menu.detail.title)
    }
    MenuLine {}
    MenuRow {
        text: "파일 경로 복사"
        enabled: menu.detail.path.length > 0
        onTriggered: menu.copyAsked(menu.detail.path)
    }
    MenuRow {
        text: "이 파일의 패치 복사"
        description: menu.detail.patchReason
        enabled: menu.detail.patchReason.length === 0
        onTriggered: menu.copyAsked(menu.detail.patch())
    }
}
