import QtQuick
import Vesk.Controls
import Vesk.Shell

// Projects with their sessions, what waits for the person above them, and the settings at the foot.
FocusScope {
    id: sidebar

    required property Workspace workspace
    required property Projects projects

    signal addFolderRequested()
    signal resumeRequested(string alias)
    signal settingsRequested()
    signal windowRequested(int kind, string alias)
    signal removeProjectRequested(string alias)
    signal renameRequested(string key, string title)

    Rectangle {
        anchors.fill: parent
        color: Theme.panel
    }

    Item {
        id: actions
        width: parent.width
        height: Theme.px(48)

        VButton {
            anchors.left: parent.left
            anchors.leftMargin: 12
            anchors.right: resume.left
            anchors.rightMargin: 8
            anchors.verticalCenter: parent.verticalCenter
            iconName: "folder-plus"
            text: "폴더 추가"
            keys: "Ctrl O"
            onClicked: sidebar.addFolderRequested()
        }
        IconButton {
            id: resume
            anchors.right: newSession.left
            anchors.verticalCenter: parent.verticalCenter
            iconName: "resume"
            text: "지난 대화"
            keys: "Ctrl R"
            onClicked: sidebar.resumeRequested("")
        }
        IconButton {
            id: newSession
            anchors.right: parent.right
            anchors.rightMargin: 10
            anchors.verticalCenter: parent.verticalCenter
            iconName: "plus"
            text: "새 세션"
            keys: "Ctrl N"
            onClicked: sidebar.workspace.newSession()
        }
    }

    Lazy {
        id: myTurn
        anchors.top: actions.bottom
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.leftMargin: 8
        anchors.rightMargin: 8
        wanted: sidebar.workspace.myTurn.count > 0
        file: Qt.resolvedUrl("MyTurnBox.qml")
        properties: ({ workspace: sidebar.workspace, sidebar: sidebar })
    }

    Lazy {
        id: loadError
        anchors.top: myTurn.bottom
        anchors.topMargin: visible ? 12 : 0
        anchors.horizontalCenter: parent.horizontalCenter
        width: parent.width - 24
        wanted: sidebar.projects.loadError.length > 0
        file: Qt.resolvedUrl("CatalogError.qml")
        properties: ({ projects: sidebar.projects })
    }

    SessionList {
        id: list
        anchors.top: loadError.bottom
        anchors.topMargin: 8
        anchors.bottom: places.top
        anchors.left: parent.left
        anchors.right: parent.right
        focus: true
        workspace: sidebar.workspace
        projects: sidebar.projects
        onResumeRequested: alias => sidebar.resumeRequested(alias)
        onWindowRequested: (kind, alias) => sidebar.windowRequested(kind, alias)
        onRemoveProjectRequested: alias => sidebar.removeProjectRequested(alias)
        onRenameRequested: (key, title) => sidebar.renameRequested(key, title)
    }

    EmptyState {
        anchors.horizontalCenter: parent.horizontalCenter
        y: list.y + Math.max(16, (list.height - height) / 3)
        visible: !sidebar.workspace.hasProjects && !loadError.visible
        text: "프로젝트 폴더를 추가하면 여기에서 세션을 시작합니다"
        actionText: "폴더 추가"
        actionKeys: "Ctrl O"
        onActionTriggered: sidebar.addFolderRequested()
    }

    Column {
        id: places
        anchors.bottom: foot.top
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.margins: 8
        visible: sidebar.workspace.hasProjects
        height: visible ? implicitHeight : 0

        PlaceRow {
            width: parent.width
            iconName: "issues"
            text: "이슈"
            keys: "Ctrl I"
            onClicked: sidebar.windowRequested(ProjectWindows.Issues, "")
        }
        PlaceRow {
            width: parent.width
            iconName: "version"
            text: "형상관리"
            keys: "Ctrl G"
            onClicked: sidebar.windowRequested(ProjectWindows.Version, "")
        }
    }

    Hairline {
        anchors.bottom: places.top
        anchors.bottomMargin: 4
        width: parent.width
        visible: places.visible
    }

    Item {
        id: foot
        anchors.bottom: parent.bottom
        width: parent.width
        height: Theme.px(44)

        Hairline { width: parent.width }

        VButton {
            anchors.left: parent.left
            anchors.leftMargin: 8
            anchors.verticalCenter: parent.verticalCenter
            kind: VButton.Quiet
            iconName: "settings"
            text: "설정"
            keys: "Ctrl ,"
            onClicked: sidebar.settingsRequested()
        }
    }
}
