import QtQuick
import Vesk.Controls
import Vesk.Version

// The rarer requests, or all of them.
Menu {
    id: menu

    required property VersionView view
    property bool all: false

    signal asked(int kind)

    y: -height - 4
    leastWidth: 220

    RequestRow {
        view: menu.view
        kind: VersionRequests.Commit
        shown: menu.all
        text: "커밋…"
        iconName: "commit"
        onTriggered: menu.asked(VersionRequests.Commit)
    }
    RequestRow {
        view: menu.view
        kind: VersionRequests.Push
        shown: menu.all
        text: "푸시…"
        iconName: "arrow-up"
        onTriggered: menu.asked(VersionRequests.Push)
    }
    RequestRow {
        view: menu.view
        kind: VersionRequests.Resolve
        shown: menu.all
        text: "충돌 풀기…"
        iconName: "check"
        onTriggered: menu.asked(VersionRequests.Resolve)
    }
    RequestRow {
        view: menu.view
        kind: VersionRequests.Pull
        text: "받아서 합치기…"
        iconName: "arrow-down"
        onTriggered: menu.asked(VersionRequests.Pull)
    }
    RequestRow {
        view: menu.view
        kind: VersionRequests.Branch
        text: "새 브랜치…"
        iconName: "version"
        onTriggered: menu.asked(VersionRequests.Branch)
    }
    RequestRow {
        view: menu.view
        kind: VersionRequests.Merge
        text: "병합…"
        iconName: "graph"
        onTriggered: menu.asked(VersionRequests.Merge)
    }
    RequestRow {
        view: menu.view
        kind: VersionRequests.Stash
        text: "스태시…"
        iconName: "folder"
        onTriggered: menu.asked(VersionRequests.Stash)
    }
}
