pragma ComponentBehavior: Bound

import QtQml
import QtQuick
import Vesk.Shell

// Every key of the main window in one table. Text fields and popups take theirs before.
Item {
    id: keymap

    required property Workspace workspace
    required property ViewSettings view
    required property SessionsPane pane

    signal addProjectTriggered()
    signal toggleSidebarTriggered()
    signal regionTriggered(int step)

    readonly property var table: rows()

    function rows(): var {
        const rows = [
            { keys: ["Ctrl+N"], run: () => workspace.newSession() },
            { keys: ["Ctrl+O"], run: () => addProjectTriggered() },
            { keys: ["Ctrl+W"], run: () => workspace.requestClose(workspace.currentKey) },
            { keys: ["Ctrl+Tab"], run: () => workspace.selectNext() },
            { keys: ["Ctrl+Shift+Tab", "Ctrl+Shift+Backtab"], run: () => workspace.selectPrevious() },
            { keys: ["Ctrl+Shift+A"], run: () => workspace.selectNextMyTurn() },
            { keys: ["Ctrl+L"], run: () => pane.focusBody() },
            { keys: ["Ctrl+."], run: () => pane.stop() },
            { keys: ["Alt+1"], run: () => pane.allowOnce() },
            { keys: ["Alt+2"], run: () => pane.allowAlways() },
            { keys: ["Alt+3"], run: () => pane.deny() },
            { keys: ["Ctrl++", "Ctrl+="], run: () => view.enlargeText() },
            { keys: ["Ctrl+-"], run: () => view.shrinkText() },
            { keys: ["Ctrl+0"], run: () => view.resetText() },
            { keys: ["F6"], run: () => regionTriggered(1) },
            { keys: ["Shift+F6"], run: () => regionTriggered(-1) },
            { keys: ["Ctrl+Shift+E"], run: () => toggleSidebarTriggered() }
        ]
        for (let index = 0; index < 9; ++index)
            rows.push({ keys: ["Ctrl+" + (index + 1)], run: () => workspace.selectIndex(index) })
        return rows
    }

    Instantiator {
        model: keymap.table

        delegate: Shortcut {
            required property var modelData

            enabled: keymap.enabled
            sequences: modelData.keys
            onActivated: modelData.run()
        }
    }
}
