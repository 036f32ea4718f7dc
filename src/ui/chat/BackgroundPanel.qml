pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Chat

// What a session does beside its turns: workflows, sub-agents and commands. One tab stop for the list: arrows, Home,
// End and letters move, Right and Left open and fold, Enter does what a press does.
FocusScope {
    id: panel

    required property ProjectChat chat
    required property bool shown

    signal closeRequested()

    Accessible.role: Accessible.Pane
    Accessible.name: "백그라운드"
    Keys.onEscapePressed: closeRequested()

    BackgroundModel {
        id: work
        chat: panel.chat
        shown: panel.shown
    }
    ClockHold {
        clock: ElapsedClock
        active: work.isRunning
    }
    Rectangle {
        anchors.fill: parent
        color: Theme.panel
    }
    BackgroundHead {
        id: head
        width: parent.width
        work: work
        onCloseRequested: panel.closeRequested()
    }

    ListView {
        id: list

        readonly property int page: Math.max(1, Math.floor(height / Theme.px(25)) - 1)

        objectName: "backgroundList"
        anchors.top: head.bottom
        anchors.bottom: foot.top
        width: parent.width
        focus: true
        activeFocusOnTab: true
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        keyNavigationEnabled: true
        highlightMoveDuration: 0
        highlightResizeDuration: 0
        topMargin: 4
        bottomMargin: 12
        model: work
        Accessible.role: Accessible.Tree
        Accessible.name: "배경 작업"

        Keys.onPressed: event => {
            if (event.modifiers & (Qt.ControlModifier | Qt.AltModifier | Qt.MetaModifier))
                return
            event.accepted = true
            if (event.key === Qt.Key_Home)
                currentIndex = 0
            else if (event.key === Qt.Key_End)
                currentIndex = count - 1
            else if (event.key === Qt.Key_PageUp)
                currentIndex = Math.max(0, currentIndex - page)
            else if (event.key === Qt.Key_PageDown)
                currentIndex = Math.min(count - 1, currentIndex + page)
            else if (event.key === Qt.Key_Return || event.key === Qt.Key_Enter || event.key === Qt.Key_Space)
                work.activate(currentIndex)
            else if (event.key === Qt.Key_Right)
                work.setOpen(currentIndex, true)
            else if (event.key === Qt.Key_Left) {
                if (!work.setOpen(currentIndex, false))
                    currentIndex = Math.max(0, work.parentOf(currentIndex))
            } else if (event.text.length > 0 && event.text.charCodeAt(0) > 0x20)
                currentIndex = Math.max(0, work.rowStartingWith(event.text, currentIndex + 1))
            else
                event.accepted = false
        }

        delegate: BackgroundEntry {
            ringed: list.activeFocus && ListView.isCurrentItem
            onActivated: {
                list.currentIndex = index
                list.forceActiveFocus(Qt.MouseFocusReason)
                work.activate(index)
            }
        }
    }
    ScrollBar {
        anchors.top: list.top
        anchors.bottom: list.bottom
        anchors.right: list.right
        orientation: Qt.Vertical
        size: list.visibleArea.heightRatio
        position: list.visibleArea.yPosition
        onPositionChanged: {
            if (pressed)
                list.contentY = list.originY + position * list.contentHeight
        }
    }
    EmptyState {
        anchors.centerIn: list
        visible: work.isEmpty
        text: panel.chat ? "이 세션이 돌린 워크플로, 하위 에이전트, 배경 명령이 여기에 보입니다"
            : "세션을 열면 그 배경 작업이 여기에 보입니다"
    }
    BackgroundFoot {
        id: foot
        anchors.bottom: parent.bottom
        width: parent.width
        work: work
    }
}
