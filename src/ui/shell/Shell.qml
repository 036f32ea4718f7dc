import QtQuick
import Vesk.Controls
import Vesk.Shell

// The regions of the main window, and what lies over them: sheets, dropped folders, keys.
FocusScope {
    id: shell

    required property Workspace workspace
    required property Projects projects
    required property AddProject addProject
    required property ViewSettings view
    required property AuditView audit
    required property ResumeView resume
    required property Settings settings
    required property Attention attention
    required property ProjectWindows windows

    property bool sidebarShown: true

    function askBeforeClosing(work: list<string>): void {
        sheets.openInPlace("CloseWindowSheet", { work: work, host: Window.window })
    }
    function addFolder(folder: string): void {
        addProject.begin(folder)
        sheets.open("AddProjectSheet", { form: addProject, projects: projects })
    }
    function openSettings(): void {
        sheets.open("SettingsSheet", { settings: settings, host: Window.window })
    }
    function openAuditLog(): void {
        audit.refresh()
        sheets.open("AuditLogSheet", { audit: audit })
    }

    // Without a project: that of the current session.
    function openResume(alias: string): void {
        resume.show(alias.length > 0 ? alias : workspace.currentChat?.alias ?? "")
        resumePanel.open()
    }

    // Without a project: that of the current session, else the first.
    function openWindow(kind: int, alias: string): void {
        windows.open(kind, alias.length > 0 ? alias : workspace.currentChat?.alias ?? projects.firstAlias())
    }

    // F6 goes through these.
    function moveRegion(step: int): void {
        const regions = []
        for (const region of [sidebar, pane.tabStrip, pane.current ? pane.body : null, background, resumePanel.item]) {
            if (region?.visible ?? false)
                regions.push(region)
        }
        let here = 0
        while (here < regions.length - 1 && !regions[here].activeFocus)
            ++here
        const next = regions[(here + step + regions.length) % regions.length]
        if (next === pane.body)
            pane.focusBody()
        else
            next.forceActiveFocus(Qt.TabFocusReason)
    }

    focus: true
    Keys.onEscapePressed: pane.softInterrupt()
    Component.onCompleted: focusLater.restart()

    Connections {
        target: shell.workspace
        function onAddProjectRequested(): void { shell.addFolder("") }
        function onCloseConfirmationNeeded(key: string, title: string, what: string): void {
            sheets.open("CloseSessionSheet", { workspace: shell.workspace, key: key, sessionTitle: title, what: what })
        }
        function onCurrentChanged(): void { focusLater.restart() }
    }

    // The pane has to follow the selection first.
    Timer {
        id: focusLater
        interval: 0
        onTriggered: pane.followCurrent()
    }

    Lazy {
        id: auditBanner
        width: parent.width
        wanted: shell.audit.failing
        file: Qt.resolvedUrl("AuditBanner.qml")
        properties: ({ audit: shell.audit })
    }

    Sidebar {
        id: sidebar
        anchors.top: auditBanner.bottom
        anchors.bottom: parent.bottom
        width: shell.view.sidebarWidth
        visible: shell.sidebarShown
        workspace: shell.workspace
        projects: shell.projects
        onAddFolderRequested: shell.addFolder("")
        onResumeRequested: alias => shell.openResume(alias)
        onSettingsRequested: shell.openSettings()
        onWindowRequested: (kind, alias) => shell.openWindow(kind, alias)
        onRemoveProjectRequested: alias => sheets.open("RemoveProjectSheet", { projects: shell.projects, alias: alias })
        onRenameRequested: (key, title) => sheets.open("RenameSheet", { workspace: shell.workspace, key: key, oldTitle: title })
    }

    Splitter {
        id: splitter
        anchors.top: auditBanner.bottom
        anchors.bottom: parent.bottom
        anchors.left: sidebar.right
        visible: shell.sidebarShown
        value: shell.view.sidebarWidth
        from: 200
        to: 400
        label: "사이드바 너비"
        onMoved: value => shell.view.sidebarWidth = value
    }

    SessionsPane {
        id: pane
        anchors.top: auditBanner.bottom
        anchors.bottom: parent.bottom
        anchors.left: shell.sidebarShown ? splitter.right : parent.left
        anchors.right: background.left
        workspace: shell.workspace
        projects: shell.projects
        onResumeRequested: shell.openResume("")
        onAuditLogRequested: shell.openAuditLog()
        onRenameRequested: (key, title) => sheets.open("RenameSheet", { workspace: shell.workspace, key: key, oldTitle: title })
    }

    BackgroundSide {
        id: background
        anchors.top: auditBanner.bottom
        anchors.bottom: parent.bottom
        anchors.right: resumePanel.left
        workspace: shell.workspace
        view: shell.view
        room: shell.width - pane.x - resumePanel.width
        onHidden: pane.focusBody()
    }

    ResumeHolder {
        id: resumePanel
        anchors.top: auditBanner.bottom
        anchors.bottom: parent.bottom
        anchors.right: parent.right
        view: shell.resume
        onResumed: key => {
            shell.workspace.select(key)
            pane.focusBody()
        }
        onDeleteRequested: (key, title) => sheets.open("DeleteConversationSheet", { view: shell.resume, key: key, conversation: title })
        onClosed: pane.focusBody()
    }

    ToastArea {
        anchors.top: auditBanner.bottom
        anchors.topMargin: Theme.px(68) + 12
        anchors.right: pane.right
        anchors.rightMargin: 16
        width: Math.min(360, pane.width - 32)
        attention: shell.attention
        resume: shell.resume
        onTakenBack: resumePanel.item ? resumePanel.item.focusList() : pane.focusBody()
    }

    FolderDrop {
        anchors.fill: parent
        enabled: !sheets.shown
        onFolderDropped: folder => shell.addFolder(folder)
    }

    SheetHost {
        id: sheets
        folder: Qt.resolvedUrl("./")
        onClosedByUser: {
            if (!resumePanel.takeFocusBack())
                pane.focusBody()
        }
    }

    Keymap {
        enabled: !sheets.shown
        workspace: shell.workspace
        view: shell.view
        pane: pane
        onAddProjectTriggered: shell.addFolder("")
        onResumeTriggered: resumePanel.item?.activeFocus ? resumePanel.close() : shell.openResume("")
        onSettingsTriggered: shell.openSettings()
        onWindowTriggered: kind => shell.openWindow(kind, "")
        onToggleSidebarTriggered: shell.sidebarShown = !shell.sidebarShown
        onRegionTriggered: step => shell.moveRegion(step)
    }
}
