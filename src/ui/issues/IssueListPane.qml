pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Issues

// The issues of a folder: search, filters, groups. Arrows go through the list from the search field too.
FocusScope {
    id: pane

    required property IssuesView view

    signal detailWanted()

    function focusSearch(): void {
        search.forceActiveFocus(Qt.ShortcutFocusReason)
        search.selectAll()
    }
    function focusList(): void { list.forceActiveFocus(Qt.TabFocusReason) }
    function enter(): void {
        const again = list.currentIndex === issues.selectedRow
        issues.activate(list.currentIndex)
        if (again && list.currentIndex >= 0)
            detailWanted()
    }

    Accessible.role: Accessible.Pane
    Accessible.name: "이슈 목록"

    Rectangle {
        anchors.fill: parent
        color: Theme.panel
    }
    IssueList {
        id: issues
        view: pane.view
        onSelectedRowChanged: {
            if (selectedRow >= 0)
                list.currentIndex = selectedRow
        }
    }
    TextField {
        id: search
        x: 12
        y: 10
        width: parent.width - 24
        focus: true
        search: true
        keys: "Ctrl F"
        placeholderText: "번호·제목·영역 찾기"
        onTextEdited: pane.view.query = text
        onTextChanged: {
            if (text.length === 0)
                pane.view.query = ""
        }
        onSubmitted: pane.enter()
        Keys.onPressed: event => {
            const step = event.key === Qt.Key_Down ? 1 : event.key === Qt.Key_Up ? -1 : 0
            event.accepted = !composing && (step !== 0 || event.key === Qt.Key_Escape && text.length > 0)
            if (!event.accepted)
                return
            if (step === 0)
                clear()
            else
                list.currentIndex = issues.issueFrom(list.currentIndex, step)
        }
        Connections {
            target: pane.view
            function onQueryChanged(): void {
                if (search.text !== pane.view.query)
                    search.text = pane.view.query
            }
        }
    }
    StatusFilterBar {
        id: filters
        anchors.top: search.bottom
        anchors.topMargin: 8
        x: 12
        width: parent.width - 24
        filter: issues.filter
        onChosen: chip => issues.filterBy(chip)
    }
    Hairline {
        id: line
        anchors.top: filters.bottom
        anchors.topMargin: 8
        width: parent.width
    }
    ListView {
        id: list
        anchors.top: line.bottom
        anchors.bottom: foot.top
        width: parent.width
        activeFocusOnTab: true
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        keyNavigationEnabled: true
        highlightMoveDuration: 0
        highlightResizeDuration: 0
        topMargin: 4
        bottomMargin: 8
        cacheBuffer: 200
        model: issues
        Accessible.role: Accessible.List
        Accessible.name: pane.view.alias + "의 이슈"
        Component.onCompleted: {
            if (issues.selectedRow >= 0)
                currentIndex = issues.selectedRow
        }

        Keys.onPressed: event => {
            event.accepted = true
            if (event.key === Qt.Key_Home)
                currentIndex = 0
            else if (event.key === Qt.Key_End)
                currentIndex = count - 1
            else if (event.key === Qt.Key_PageDown || event.key === Qt.Key_PageUp)
                currentIndex = Math.max(0, Math.min(count - 1, currentIndex + (event.key === Qt.Key_PageDown ? 10 : -10)))
            else if (event.key === Qt.Key_Return || event.key === Qt.Key_Enter)
                pane.enter()
            else if (event.key === Qt.Key_Left || event.key === Qt.Key_Right)
                issues.setFolded(currentIndex, event.key === Qt.Key_Left)
            else if (event.key === Qt.Key_S && event.modifiers === Qt.NoModifier)
                (currentItem as IssueListItem)?.openStatusMenu()
            else
                event.accepted = false
        }

        delegate: IssueListItem {
            view: pane.view
            selected: path.length > 0 && path === pane.view.selectedPath
            ringed: ListView.isCurrentItem && list.activeFocus
            onPicked: {
                list.currentIndex = index
                list.forceActiveFocus(Qt.MouseFocusReason)
                issues.activate(index)
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
        anchors.horizontalCenter: parent.horizontalCenter
        y: list.y + Math.max(16, (list.height - height) / 3)
        visible: text.length > 0
        text: issues.emptyText
    }
    Item {
        id: foot
        anchors.bottom: parent.bottom
        width: parent.width
        height: Theme.px(30)

        Hairline { width: parent.width }
        Label {
            x: 14
            width: parent.width - amount.width - 36
            height: parent.height
            text: pane.view.shownFolder
            elide: Text.ElideMiddle
            font: Theme.codeSmall
            color: Theme.text3
        }
        Label {
            id: amount
            anchors.right: parent.right
            anchors.rightMargin: 14
            height: parent.height
            text: pane.view.issueCount + "건"
            font: Theme.meta
            color: Theme.text3
        }
    }
}
