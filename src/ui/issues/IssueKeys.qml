import QtQuick
import Vesk.Issues

// Every key of an issue window in one table. Text fields and popups take theirs before.
Item {
    id: keys

    required property IssuesView view
    required property bool ready

    signal closeTriggered()
    signal searchTriggered()
    signal newTriggered()
    signal saveTriggered()
    signal regionTriggered(int step)

    Shortcut { enabled: keys.enabled; sequence: "Ctrl+W"; onActivated: keys.closeTriggered() }
    Shortcut { enabled: keys.enabled && keys.ready; sequence: "Ctrl+F"; onActivated: keys.searchTriggered() }
    Shortcut { enabled: keys.enabled && keys.ready; sequence: "Ctrl+Shift+N"; onActivated: keys.newTriggered() }
    Shortcut { enabled: keys.enabled; sequence: "Ctrl+S"; onActivated: keys.saveTriggered() }
    Shortcut { enabled: keys.enabled && keys.ready; sequence: "Ctrl+Z"; onActivated: keys.view.undoStatus() }
    Shortcut { enabled: keys.enabled; sequence: "F5"; onActivated: keys.view.reload() }
    Shortcut { enabled: keys.enabled; sequence: "F6"; onActivated: keys.regionTriggered(1) }
    Shortcut { enabled: keys.enabled; sequence: "Shift+F6"; onActivated: keys.regionTriggered(-1) }
    Shortcut { enabled: keys.enabled; sequence: "Ctrl+1"; onActivated: keys.view.section = IssuesView.List }
    Shortcut { enabled: keys.enabled; sequence: "Ctrl+2"; onActivated: keys.view.section = IssuesView.Graph }
    Shortcut { enabled: keys.enabled; sequence: "Ctrl+3"; onActivated: keys.view.section = IssuesView.Kanban }
    Shortcut {
        sequences: ["Ctrl++", "Ctrl+="]
        onActivated: keys.view.changeTextSize(1)
        onActivatedAmbiguously: keys.view.changeTextSize(1)
    }
    Shortcut { sequence: "Ctrl+-"; onActivated: keys.view.changeTextSize(-1) }
    Shortcut { sequence: "Ctrl+0"; onActivated: keys.view.changeTextSize(0) }
}
