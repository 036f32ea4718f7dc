import QtQuick
import Vesk.Controls
import Vesk.Version

// The rarer requests.
Menu {
    id: menu

    required property VersionView view

    signal asked(int kind)

    y: -height - 4
    leastWidth: 220

    MenuRow {
        readonly property string reason: menu.view.requestReason(VersionRequests.Pull)

        text: "받아서 합치기…"
        iconName: "arrow-down"
        description: reason
        enabled: reason.length === 0
        onTriggered: menu.asked(VersionRequests.Pull)
    }
    MenuRow {
        readonly property string reason: menu.view.requestReason(VersionRequests.Branch)

        text: "새 브랜치…"
        iconName: "version"
        description: reason
        enabled: reason.length === 0
        onTriggered: menu.asked(VersionRequests.Branch)
    }
    MenuRow {
        readonly property string reason: menu.view.requestReason(VersionRequests.Merge)

        text: "병합…"
        iconName: "graph"
        description: reason
        enabled: reason.length === 0
        onTriggered: menu.asked(VersionRequests.Merge)
    }
    MenuRow {
        readonly property string reason: menu.view.requestReason(VersionRequests.Stash)

        text: "스태시…"
        iconName: "folder"
        description: reason
        enabled: reason.length === 0
        onTriggered: menu.asked(VersionRequests.Stash)
    }
}
