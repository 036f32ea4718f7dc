pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Shell

// A project's past conversations, at the right of the window. Arrows go through the list from the search field too.
FocusScope {
    id: panel

    required property ResumeView view

    signal closeRequested()

    function focusField(): void {
        field.forceActiveFocus()
        field.selectAll()
    }
    function focusList(): void { list.forceActiveFocus() }
    function resumeCurrent(): void { view.resume(view.rows.keyAt(list.currentIndex)) }

    Accessible.role: Accessible.Pane
    Accessible.name: "지난 대화"

    Keys.onEscapePressed: {
        if (field.text.length > 0)
            field.clear()
        else
            closeRequested()
    }

    Rectangle {
        anchors.fill: parent
        color: Theme.panel
    }
    Rectangle {
        width: 1
        height: parent.height
        color: Theme.line
    }

    ResumeHead {
        id: head
        width: parent.width
        view: panel.view
        onCloseTriggered: panel.closeRequested()
    }

    TextField {
        id: field
        anchors.top: head.bottom
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.leftMargin: 12
        anchors.rightMargin: 12
        focus: true
        search: true
        placeholderText: "제목에서 찾기"
        onTextChanged: {
            panel.view.filter = text
            list.currentIndex = list.count > 0 ? 0 : -1
        }
        onSubmitted: panel.resumeCurrent()
        Keys.onPressed: event => {
            const step = event.key === Qt.Key_Down ? 1 : event.key === Qt.Key_Up ? -1 : 0
            event.accepted = step !== 0 && !composing && list.count > 0
            if (event.accepted)
                list.currentIndex = Math.max(0, Math.min(list.count - 1, list.currentIndex + step))
        }
    }

    Lazy {
        id: notice
        anchors.top: field.bottom
        anchors.topMargin: 8
        width: parent.width
        wanted: panel.view.notice.length > 0
        file: Qt.resolvedUrl("ResumeNotice.qml")
        properties: ({ view: panel.view })
    }

    ListView {
        id: list
        anchors.top: notice.bottom
        anchors.bottom: foot.top
        width: parent.width
        activeFocusOnTab: true
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        keyNavigationEnabled: true
        highlightMoveDuration: 0
        highlightResizeDuration: 0
        model: panel.view.rows
        // Rows come while somebody types already.
        onCountChanged: {
            if (count > 0 && currentIndex < 0)
                currentIndex = 0
        }
        Accessible.role: Accessible.List
        Accessible.name: panel.view.alias + "의 지난 대화"

        Keys.onPressed: event => {
            event.accepted = true
            if (event.key === Qt.Key_Home)
                currentIndex = 0
            else if (event.key === Qt.Key_End)
                currentIndex = count - 1
            else if (event.key === Qt.Key_PageDown || event.key === Qt.Key_PageUp)
                currentIndex = Math.max(0, Math.min(count - 1, currentIndex + (event.key === Qt.Key_PageDown ? 10 : -10)))
            else if (event.key === Qt.Key_Return || event.key === Qt.Key_Enter)
                panel.resumeCurrent()
            else if (event.key === Qt.Key_Delete)
                panel.view.requestDelete(panel.view.rows.keyAt(currentIndex))
            else if (event.matches(StandardKey.Undo))
                panel.view.undoTrash()
            else
                event.accepted = false
        }

        delegate: ResumeRow {
            current: ListView.isCurrentItem
            ringed: current && list.activeFocus
            onPicked: {
                list.currentIndex = index
                list.forceActiveFocus()
            }
            onResumeTriggered: panel.view.resume(key)
            onDeleteTriggered: panel.view.requestDelete(key)
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
        anchors.horizontalCenter: parent.horizontalCenter
        y: list.y + Math.max(16, (list.height - height) / 3)
        visible: text.length > 0
        text: panel.view.emptyText
    }
    ErrorState {
        anchors.horizontalCenter: parent.horizontalCenter
        y: list.y + Math.max(16, (list.height - height) / 3)
        width: parent.width - 48
        visible: text.length > 0 && list.count === 0
        text: panel.view.errorText
        onRetryTriggered: panel.view.refresh()
        onCopyTriggered: Desktop.copyText(text)
    }

    Item {
        id: foot
        anchors.bottom: parent.bottom
        width: parent.width
        height: Theme.px(36)

        Hairline { width: parent.width }
        LoadingLine {
            x: 12
            anchors.verticalCenter: parent.verticalCenter
            visible: panel.view.loading
            text: "대화를 읽는 중 " + panel.view.rows.count
            onCancelTriggered: panel.view.cancel()
        }
        Label {
            x: 12
            width: parent.width - 24
            height: parent.height
            visible: !panel.view.loading
            text: panel.view.errorText.length > 0 && list.count > 0 ? panel.view.errorText : panel.view.countText
            font: Theme.meta
            color: panel.view.errorText.length > 0 ? Theme.danger : Theme.text3
        }
    }
}
