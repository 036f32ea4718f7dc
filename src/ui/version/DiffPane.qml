pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Version

// The difference of one file. Lines are chosen with the pointer or with Shift and the arrows, and copied.
FocusScope {
    id: pane

    required property CommitDetail detail

    readonly property DiffModel diff: detail.diff
    // The row of the keyboard, and where a choice of several began.
    property int row: 0
    property int anchor: 0
    property real scrolled: 0

    readonly property int first: Math.min(row, anchor)
    readonly property int last: Math.max(row, anchor)
    readonly property int numberWidth: Theme.px(Math.max(42, 10 + 8 * diff.digits))
    readonly property real numbersWidth: numberWidth * 2 + Theme.px(20)
    readonly property real textRoom: width - numbersWidth
    readonly property real mostScrolled: Math.max(0, ruler.textWidth + (diff.longestIsCut ? Theme.px(110) : 24) - textRoom)

    signal copyAsked(string text)
    signal backTriggered()

    function goTo(wanted: int, extend: bool): void {
        if (diff.count === 0)
            return
        row = Math.max(0, Math.min(diff.count - 1, wanted))
        if (!extend)
            anchor = row
        list.positionViewAtIndex(row, ListView.Contain)
    }
    function goToHunk(step: int): void {
        const wanted = diff.hunkFrom(row, step)
        if (wanted < 0)
            return
        row = wanted
        anchor = wanted
        list.positionViewAtIndex(wanted, ListView.Beginning)
    }
    function scrollBy(step: real): void {
        scrolled = Math.max(0, Math.min(mostScrolled, scrolled + step))
    }

    onMostScrolledChanged: scrollBy(0)

    Connections {
        target: pane.detail
        function onFileChanged(): void {
            pane.row = 0
            pane.anchor = 0
            pane.scrolled = 0
        }
    }
    DiffText {
        id: ruler
        visible: false
        text: pane.diff.longestLine
        font: Theme.code
    }
    DiffHead {
        id: head
        width: parent.width
        path: pane.detail.shownPath
        kind: pane.detail.fileLabel
        hunk: pane.diff.hunkAt(pane.row)
        hunks: pane.diff.hunkCount
        canGoBack: pane.diff.hunkCount > 0 && pane.diff.hunkFrom(pane.row, -1) >= 0
        canGoOn: pane.diff.hunkCount > 0 && pane.diff.hunkFrom(pane.row, 1) >= 0
        onHunkTriggered: step => pane.goToHunk(step)
    }
    ListView {
        id: list
        anchors.top: head.bottom
        anchors.bottom: parent.bottom
        width: parent.width
        focus: true
        activeFocusOnTab: true
        clip: true
        reuseItems: true
        boundsBehavior: Flickable.StopAtBounds
        visible: pane.detail.diffSentence.length === 0
        model: pane.diff
        Accessible.role: Accessible.List
        Accessible.name: "변경 내용"

        TapHandler { onTapped: list.forceActiveFocus() }
        Keys.onPressed: event => {
            event.accepted = true
            const shift = (event.modifiers & Qt.ShiftModifier) !== 0
            const page = Math.max(1, Math.floor(height / Theme.codeLine) - 1)
            if (event.matches(StandardKey.Copy))
                pane.copyAsked(pane.diff.textOf(pane.first, pane.last))
            else if (event.matches(StandardKey.SelectAll)) {
                pane.anchor = 0
                pane.row = count - 1
            } else if (event.key === Qt.Key_Down)
                pane.goTo(pane.row + 1, shift)
            else if (event.key === Qt.Key_Up)
                pane.goTo(pane.row - 1, shift)
            else if (event.key === Qt.Key_PageDown)
                pane.goTo(pane.row + page, shift)
            else if (event.key === Qt.Key_PageUp)
                pane.goTo(pane.row - page, shift)
            else if (event.key === Qt.Key_Home)
                pane.goTo(0, shift)
            else if (event.key === Qt.Key_End)
                pane.goTo(count - 1, shift)
            else if (event.key === Qt.Key_Left)
                pane.scrollBy(-40)
            else if (event.key === Qt.Key_Right)
                pane.scrollBy(40)
            else if (event.key === Qt.Key_Escape)
                pane.backTriggered()
            else
                event.accepted = false
        }

        delegate: DiffRow {
            chosen: list.activeFocus && index >= pane.first && index <= pane.last
            scrolled: pane.scrolled
            numberWidth: pane.numberWidth
            onPicked: extend => {
                list.forceActiveFocus()
                pane.goTo(index, extend)
            }
        }
        WheelHandler {
            orientation: Qt.Horizontal
            target: null
            onWheel: event => pane.scrollBy(-(event.pixelDelta.x !== 0 ? event.pixelDelta.x : event.angleDelta.x / 2))
        }
    }
    ScrollBar {
        anchors.top: list.top
        anchors.bottom: list.bottom
        anchors.right: parent.right
        orientation: Qt.Vertical
        visible: list.visible && size < 1
        size: list.visibleArea.heightRatio
        position: list.visibleArea.yPosition
        onPositionChanged: {
            if (pressed)
                list.contentY = list.originY + position * list.contentHeight
        }
    }
    ScrollBar {
        anchors.bottom: parent.bottom
        x: pane.numbersWidth
        width: pane.textRoom - 10
        orientation: Qt.Horizontal
        visible: list.visible && pane.mostScrolled > 0
        size: pane.textRoom / (pane.textRoom + pane.mostScrolled)
        position: pane.scrolled / (pane.textRoom + pane.mostScrolled)
        onPositionChanged: {
            if (pressed)
                pane.scrolled = position * (pane.textRoom + pane.mostScrolled)
        }
    }
    LoadingLine {
        x: 16
        anchors.top: head.bottom
        anchors.topMargin: 8
        visible: pane.detail.diffLoading && pane.diff.count === 0 && pane.detail.diffSentence.length === 0
        text: "변경 내용을 읽는 중"
        canCancel: false
    }
    Label {
        x: 16
        anchors.top: head.bottom
        anchors.topMargin: 14
        width: parent.width - 32
        visible: text.length > 0 && !pane.detail.diffFailed
        text: pane.detail.diffSentence
        color: Theme.text2
        wrapMode: Text.WordWrap
    }
    ErrorState {
        x: 16
        anchors.top: head.bottom
        anchors.topMargin: 14
        visible: pane.detail.diffFailed
        text: pane.detail.diffSentence
        onRetryTriggered: pane.detail.retryDiff()
        onCopyTriggered: pane.copyAsked(text)
    }
}
