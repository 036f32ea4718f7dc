import QtQuick
import Vesk.Controls
import Vesk.Issues

// What else can be done with the issue that is open.
Menu {
    id: menu

    required property IssueDetail detail
    // The button that it hangs from.
    required property Item anchor

    parent: anchor
    x: anchor.width - width
    y: anchor.height + 4
    Component.onCompleted: open()

    MenuRow {
        text: "파일 열기"
        iconName: "open-external"
        onTriggered: menu.detail.openFile()
    }
    MenuRow {
        text: "폴더 열기"
        iconName: "folder"
        onTriggered: menu.detail.openFolder()
    }
    MenuLine {}
    MenuRow {
        text: "경로 복사"
        iconName: "copy"
        onTriggered: menu.detail.copyPath()
    }
    MenuRow {
        text: "번호 복사"
        iconName: "copy"
        onTriggered: menu.detail.copyId()
    }
    MenuLine {}
    MenuRow {
        text: "의존관계에서 보기"
        iconName: "graph"
        keys: "Ctrl 2"
        onTriggered: menu.detail.view.section = IssuesView.Graph
    }
    MenuRow {
        text: "지금 저장"
        keys: "Ctrl S"
        iconName: "check"
        enabled: menu.detail.document?.canSave ?? false
        onTriggered: menu.detail.saveNow()
    }
}
