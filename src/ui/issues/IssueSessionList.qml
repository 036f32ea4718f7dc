pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Vesk.Chat
import Vesk.Controls
import Vesk.Issues

// The open sessions that came from an issue; a press goes there.
Column {
    id: list

    required property IssuesView view
    required property string path

    readonly property alias count: rows.count

    spacing: 2

    IssueSessions {
        id: sessions
        view: list.view
        path: list.path
    }
    Label {
        height: Theme.px(24)
        text: "이 이슈의 세션"
        font: Theme.meta
        color: Theme.text2
    }
    Repeater {
        id: rows
        model: sessions

        delegate: T.AbstractButton {
            id: session

            required property int index
            required property string title
            required property int mark
            required property bool waits
            required property bool live
            required property date since
            required property string moment

            readonly property string when: !live ? moment : waits ? ChatTime.waiting(since, ElapsedClock.now)
                : ChatTime.elapsed(since, ElapsedClock.now)

            width: list.width
            height: Theme.px(28)
            focusPolicy: Qt.StrongFocus
            Accessible.role: Accessible.Link
            Accessible.name: "세션 " + title
            Accessible.description: waits || !live ? when : ""
            Keys.onReturnPressed: sessions.show(index)
            Keys.onEnterPressed: sessions.show(index)
            onClicked: sessions.show(index)

            contentItem: Item {
                SessionMark {
                    id: sign
                    x: 1
                    anchors.verticalCenter: parent.verticalCenter
                    kind: session.mark
                }
                Label {
                    anchors.left: sign.right
                    anchors.leftMargin: 8
                    width: time.x - x - 8
                    height: parent.height
                    text: session.title
                    Accessible.ignored: true
                }
                Label {
                    id: time
                    anchors.right: parent.right
                    anchors.rightMargin: 4
                    height: parent.height
                    text: session.when
                    font: Theme.meta
                    color: session.waits ? Theme.wait : Theme.text3
                    Accessible.ignored: true

                    ClockHold {
                        clock: ElapsedClock
                        active: session.live
                    }
                }
            }
            background: Rectangle {
                radius: Theme.radius
                color: session.hovered ? Theme.hover : "transparent"

                FocusRing {
                    visible: session.visualFocus
                    gap: -2
                }
            }
        }
    }
}
