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
    required property Settings settings
    required property Attention attention
    required property ResumeView resume
    required property ProjectWindows windows

    title: workspace.windowTitle
    minimumWidth: 900
    minimumHeight: 600
    color: Theme.canvas

    onClosing: close => close.accepted = attention.mayClose()

    Connections {
        target: window.attention
        function onHideAsked(): void { window.hide() }
        function onConfirmationAsked(): void { shell.askBeforeClosing(window.workspace.liveWork()) }
    }

    Shell {
        id: shell
        anchors.fill: parent
        workspace: window.workspace
        projects: window.projects
        addProject: window.addProject
        view: window.view
        audit: window.audit
        resume: window.resume
        windows: window.windows
        settings: window.settings
        attention: window.attention
    }
}
