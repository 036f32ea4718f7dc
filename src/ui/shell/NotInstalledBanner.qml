import QtQuick
import Vesk.Controls
import Vesk.Shell

// The same news above the sessions that are open.
Banner {
    id: banner

    required property string command

    tone: "warning"
    closable: false
    detail: command
    actionText: "명령 복사"
    onActionTriggered: Desktop.copyText(banner.command)
}
