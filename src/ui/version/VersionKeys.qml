pragma ComponentBehavior: Bound

import QtQml
import QtQuick
import Vesk.Version

// The keys of the version window in one table. Lists and fields take theirs before.
Item {
    id: keymap

    required property VersionView view
    required property VersionPage page

    signal closeTriggered()

    Instantiator {
        model: [
            { keys: ["Ctrl+W"], run: () => keymap.closeTriggered() },
            { keys: ["F5"], run: () => keymap.view.reload() },
            { keys: ["Shift+F5"], run: () => keymap.view.startFetch() },
            { keys: ["Ctrl+F"], run: () => keymap.page.openFind() },
            { keys: ["F3"], run: () => keymap.page.findNext(1) },
            { keys: ["Shift+F3"], run: () => keymap.page.findNext(-1) },
            { keys: ["F6"], run: () => keymap.page.moveRegion(1) },
            { keys: ["Shift+F6"], run: () => keymap.page.moveRegion(-1) },
            { keys: ["]"], run: () => keymap.page.goToHunk(1) },
            { keys: ["["], run: () => keymap.page.goToHunk(-1) },
            { keys: ["Ctrl++", "Ctrl+="], run: () => keymap.view.stepTextSize(1) },
            { keys: ["Ctrl+-"], run: () => keymap.view.stepTextSize(-1) },
            { keys: ["Ctrl+0"], run: () => keymap.view.stepTextSize(0) }
        ]

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
