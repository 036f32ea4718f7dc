import QtQuick
import Vesk.Controls
import Vesk.Shell

// The same news above the sessions that are open.
Banner {
    id: banner

    required property Workspace workspace

    tone: "warning"
    closable: false
    text: workspace.installText.split("\n")[0]
    detail: workspace.installCommand
    actionText: "명령 복사"
    onActionTriggered: Desktop.copyText(banner.workspace.installCommand)
}
