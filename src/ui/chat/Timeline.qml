pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Chat

// The rows of a session, newest at the bottom.
Item {
    id: timeline

    required property ChatViewModel view

    signal openLink(string link)

    function scrollToEnd(): void {
        rows.scrollToEnd()
    }

    function follow(link: string): void {
        if (link.startsWith("http://") || link.startsWith("https://"))
            Qt.openUrlExternally(link)
        else
            openLink(link)
    }

    TimelineView {
        id: rows
        objectName: "timelineRows"
        anchors.fill: parent
        model: timeline.view.timeline
        Accessible.role: Accessible.List
        Accessible.name: "대화"

        delegates: [
            Component {
                UserRow {
                    onLinkActivated: link => timeline.follow(link)
                }
            },
            Component {
                AssistantRow {
                    onLinkActivated: link => timeline.follow(link)
                }
            },
            Component {
                NoteRow {}
            },
            Component {
                ToolsRow {
                    id: toolsRow
                    live: timeline.view.status.isRunning || timeline.view.status.backgroundCount > 0
                    onAboutToChange: rows.holdInPlace(toolsRow)
                }
            }
        ]

        FocusRing {
            visible: rows.activeFocus && rows.keyboardFocus
            gap: -3
        }
    }
    EmptyState {
        anchors.centerIn: parent
        visible: timeline.view.isEmpty
        text: "무엇을 할지 아래에 적으면 세션이 시작됩니다"
    }
    ScrollBar {
        id: bar
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.bottom: parent.bottom
        orientation: Qt.Vertical
        size: rows.visibleSize
        onPositionChanged: {
            if (pressed)
                rows.scrollToFraction(position)
        }

        Binding {
            bar.position: rows.visibleStart
            when: !bar.pressed
        }
    }
    JumpButton {
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        anchors.margins: 16
        visible: !rows.stickToBottom
        text: rows.jumpText
        hasNews: rows.hasNewBelow
        onClicked: rows.scrollToEnd()
    }
}
