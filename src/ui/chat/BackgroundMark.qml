import QtQuick
import Vesk.Controls

// How a task or an agent stands: a ring, a tick, a cross, or the dot of what has not begun.
Item {
    id: mark

    required property string workState

    implicitWidth: Theme.px(16)
    implicitHeight: Theme.px(16)
    Accessible.ignored: true

    Loader {
        active: mark.workState === "running"
        sourceComponent: RunningMark {}
    }
    Icon {
        visible: mark.workState !== "running"
        name: mark.workState === "done" ? "mark-finished" : mark.workState === "failed" ? "mark-failed" : "mark-idle"
        color: mark.workState === "done" ? Theme.success : mark.workState === "failed" ? Theme.danger : Theme.text3
    }
}
