pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Shell

// The settings: sections at the left, the open one beside them. Every choice holds at once.
Dialog {
    id: sheet

    required property Settings settings
    required property Window host

    implicitWidth: Math.min(Theme.px(1080), host.width - 64)
    implicitHeight: Math.min(Theme.px(720), host.height - 64)
    // The frame's edge stays free.
    topPadding: 1
    bottomPadding: 1
    leftPadding: 1
    rightPadding: 1

    // The window's own keys rest below a sheet; these say so much on the buttons here.
    Shortcut {
        sequences: ["Ctrl++", "Ctrl+="]
        onActivated: sheet.settings.view.enlargeText()
    }
    Shortcut {
        sequence: "Ctrl+-"
        onActivated: sheet.settings.view.shrinkText()
    }
    Shortcut {
        sequence: "Ctrl+0"
        onActivated: sheet.settings.view.resetText()
    }
    Shortcut {
        sequence: "Ctrl+,"
        onActivated: sheet.close()
    }

    contentItem: FocusScope {
        focus: true

        SettingsNav {
            id: nav
            width: Math.min(Theme.px(220), parent.width * 0.32)
            height: parent.height
            focus: true
            settings: sheet.settings
        }
        Hairline {
            id: border
            anchors.left: nav.right
            width: 1
            height: parent.height
        }
        Rectangle {
            anchors.left: border.right
            anchors.right: parent.right
            height: parent.height
            radius: Theme.radius
            color: Theme.canvas
        }
        SettingsPage {
            anchors.left: border.right
            anchors.right: parent.right
            height: parent.height
            settings: sheet.settings
        }
        IconButton {
            anchors.top: parent.top
            anchors.right: parent.right
            anchors.margins: 12
            iconName: "close"
            text: "닫기"
            keys: "Esc"
            onClicked: sheet.close()
        }
    }
}
