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
    signal resumeTriggered()
    signal settingsTriggered()
    signal windowTriggered(int kind)
    signal toggleSidebarTriggered()
    signal regionTriggered(int step)

    readonly property var table: rows()

    function rows(): var {
        const rows = [
            { keys: ["Ctrl+N"], run: () => workspace.newSession() },
            { keys: ["Ctrl+O"], run: () => addProjectTriggered() },
            { keys: ["Ctrl+R"], run: () => resumeTriggered() },
            { keys: ["Ctrl+W"], run: () => workspace.requestCloseCurrent() },
            { keys: ["Ctrl+Tab"], run: () => workspace.selectNext() },
            { keys: ["Ctrl+Shift+Tab", "Ctrl+Shift+Backtab"], run: () => workspace.selectPrevious() },
            { keys: ["Ctrl+Shift+A"], run: () => workspace.selectNextMyTurn() },
            { keys: ["Ctrl+L"], run: () => pane.focusBody() },
            { keys: ["Ctrl+."], run: () => pane.stop() },
            { keys: ["Alt+1"], run: () => pane.allowOnce() },
            { keys: ["Alt+2"], run: () => pane.allowAlways() },
            { keys: ["Alt+3"], run: () => pane.deny() },
            { keys: ["Ctrl+B"], run: () => workspace.backgroundShown = !workspace.backgroundShown },
            { keys: ["Ctrl++", "Ctrl+="], run: () => view.enlargeText() },
            { keys: ["Ctrl+-"], run: () => view.shrinkText() },
            { keys: ["Ctrl+0"], run: () => view.resetText() },
            { keys: ["Ctrl+I"], run: () => windowTriggered(ProjectWindows.Issues) },
            { keys: ["Ctrl+G"], run: () => windowTriggered(ProjectWindows.Version) },
            { keys: ["Ctrl+,"], run: () => settingsTriggered() },
            { keys: ["F6"], run: () => regionTriggered(1) },
            { keys: ["Shift+F6"], run: () => regionTriggered(-1) },
            { keys: ["Ctrl+Shift+E"], run: () => toggleSidebarTriggered() },
            // The same key bears another sign on a Korean keyboard.
            { keys: ["Ctrl+\\", "Ctrl+₩"], run: () => workspace.splitCurrent(Panes.Right) },
            { keys: ["Ctrl+Shift+\\", "Ctrl+|", "Ctrl+Shift+|", "Ctrl+Shift+₩"], run: () => workspace.splitCurrent(Panes.Below) },
            { keys: ["Ctrl+Shift+PgUp"], run: () => workspace.panes.shift(workspace.currentKey, -1) },
            { keys: ["Ctrl+Shift+PgDown"], run: () => workspace.panes.shift(workspace.currentKey, 1) }
        ]
        const sides = { Left: Panes.Left, Right: Panes.Right, Up: Panes.Above, Down: Panes.Below }
        for (const arrow in sides) {
            rows.push({ keys: ["Alt+" + arrow], run: () => workspace.panes.focusBeside(sides[arrow]) })
            rows.push({ keys: ["Alt+Shift+" + arrow], run: () => workspace.panes.moveTowards(workspace.currentKey, sides[arrow]) })
        }
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
            // By two names of the same keys, as a shifted sign has them.
            onActivatedAmbiguously: modelData.run()
        }
    }
}
