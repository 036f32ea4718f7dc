pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Version

// The chosen commit, or the work tree: its head, its files, the difference of one of them.
FocusScope {
    id: pane

    required property VersionView view
    required property CommitDetail detail

    readonly property Item filesList: files
    readonly property Item diffList: diff

    signal closed()
    signal backTriggered()

    function goToHunk(step: int): void { diff.goToHunk(step) }

    Rectangle {
        anchors.fill: parent
        color: Theme.canvas
    }
    DetailHead {
        id: head
        width: parent.width
        mostBody: pane.height / 3
        detail: pane.detail
        onCopyAsked: text => pane.view.copy(text)
        onClosed: pane.closed()
    }
    Rectangle {
        anchors.fill: filesArea
        color: Theme.panel
    }
    Item {
        id: filesArea
        anchors.top: head.bottom
        anchors.bottom: parent.bottom
        width: Math.min(pane.view.measures.files, pane.width / 2)

        ChangeList {
            id: files
            anchors.top: parent.top
            anchors.bottom: note.top
            anchors.topMargin: 4
            width: parent.width
            files: pane.detail.files
            label: "바뀐 파일"
            current: pane.detail.path
            rowHeight: Theme.px(27)
            onPicked: path => pane.detail.selectFile(path)
            onOpened: diff.forceActiveFocus(Qt.TabFocusReason)
            onBackTriggered: pane.backTriggered()
            onCopyAsked: text => pane.view.copy(text)
        }
        Label {
            id: note
            anchors.bottom: parent.bottom
            x: 12
            width: parent.width - 24
            height: visible ? Theme.px(28) : 0
            visible: text.length > 0 && !pane.detail.filesFailed && files.files.count > 0
            text: pane.detail.filesNote
            font: Theme.meta
            color: Theme.text3
        }
        Label {
            x: 12
            y: 10
            width: parent.width - 24
            visible: pane.detail.filesNote.length > 0 && !pane.detail.filesFailed && files.files.count === 0
            text: pane.detail.filesNote
            font: Theme.secondary
            color: Theme.text3
            wrapMode: Text.WordWrap
        }
        LoadingLine {
            x: 12
            y: 8
            visible: pane.detail.filesLoading && files.files.count === 0
            text: "파일을 읽는 중"
            canCancel: false
        }
        ErrorState {
            x: 12
            y: 10
            width: parent.width - 24
            visible: pane.detail.filesFailed
            text: pane.detail.filesNote
            onRetryTriggered: pane.detail.isWorkTree ? pane.view.reload() : pane.detail.retryFiles()
            onCopyTriggered: pane.view.copy(text)
        }
    }
    Splitter {
        id: splitter
        anchors.top: head.bottom
        anchors.bottom: parent.bottom
        anchors.left: filesArea.right
        value: pane.view.measures.files
        from: 140
        to: 480
        label: "파일 칸 너비"
        onMoved: value => pane.view.measures.files = value
    }
    DiffPane {
        id: diff
        anchors.top: head.bottom
        anchors.bottom: parent.bottom
        anchors.left: splitter.right
        anchors.right: parent.right
        visible: pane.detail.path.length > 0
        detail: pane.detail
        onCopyAsked: text => pane.view.copy(text)
        onBackTriggered: files.forceActiveFocus(Qt.TabFocusReason)
    }
}
