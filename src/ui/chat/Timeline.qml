pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Chat

// The rows of a session, newest at the bottom.
Item {
    id: timeline

    required property ChatViewModel view

    function scrollToEnd(): void {
        rows.scrollToEnd()
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
                    onLinkChosen: (link, html) => timeline.view.links.follow(link, html)
                }
            },
            Component {
                AssistantRow {
                    onLinkChosen: (link, html) => timeline.view.links.follow(link, html)
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
