import QtQuick
import Vesk.Controls
import Vesk.Shell

// The one main window.
Window {
    id: window

    required property Workspace workspace
    required property Projects projects
    required property AddProject addProject
    required property ViewSettings view
    required property AuditView audit

    title: workspace.windowTitle
    minimumWidth: 900
    minimumHeight: 600
    color: Theme.canvas

    onClosing: close => {
        const work = workspace.liveWork()
        close.accepted = work.length === 0
        if (close.accepted)
            Qt.quit()
        else
            shell.askBeforeClosing(work)
    }

    Shell {
        id: shell
        anchors.fill: parent
        workspace: window.workspace
        projects: window.projects
        addProject: window.addProject
        view: window.view
        audit: window.audit
    }
}
