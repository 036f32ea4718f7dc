import QtQuick
import Vesk.Controls
import Vesk.Shell

// What can be done with a project.
Menu {
    id: menu

    required property string alias
    required property int lane
    required property SessionList panel

    MenuRow {
        text: "새 세션"
        iconName: "plus"
        onTriggered: menu.panel.workspace.newSession(menu.alias)
    }
    MenuRow {
        text: "지난 대화"
        iconName: "resume"
        onTriggered: menu.panel.resumeRequested(menu.alias)
    }
    MenuRow {
        text: "이슈"
        iconName: "issues"
        onTriggered: menu.panel.windowRequested(ProjectWindows.Issues, menu.alias)
    }
    MenuRow {
        text: "형상관리"
        iconName: "version"
        onTriggered: menu.panel.windowRequested(ProjectWindows.Version, menu.alias)
    }
    MenuRow {
        text: "폴더 열기"
        iconName: "folder"
        onTriggered: Desktop.showFolder(menu.panel.projects.folder(menu.alias))
    }
    MenuLine {}
    LaneChoice {
        lane: menu.lane
        onChosen: lane => {
            menu.panel.projects.setLane(menu.alias, lane)
            menu.close()
        }
    }
    MenuLine {}
    MenuRow {
        text: "목록에서 빼기…"
        iconName: "trash"
        destructive: true
        onTriggered: menu.panel.removeProjectRequested(menu.alias)
    }
}
