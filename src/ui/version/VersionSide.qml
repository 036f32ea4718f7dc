pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Version

// The branch, what is changed and not committed, and what a session can be asked to do.
FocusScope {
    id: side

    required property VersionView view
    // The path that is shown in the detail.
    required property string current

    signal picked(string path)
    signal asked(int kind)

    function focusRequests(): void { foot.forceActiveFocus() }

    Rectangle {
        anchors.fill: parent
        color: Theme.panel
    }
    BranchHead {
        id: head
        width: parent.width
        view: side.view
    }
    Item {
        id: heading
        anchors.top: head.bottom
        width: parent.width
        height: Theme.px(34)
        visible: side.view.state === VersionView.Ready

        Label {
            x: 12
            anchors.verticalCenter: parent.verticalCenter
            text: side.view.changes.count > 0 ? "변경 " + side.view.changes.count : "변경"
            font: Theme.secondaryBold
            color: Theme.text2
        }
        ChangeSums {
            anchors.right: parent.right
            anchors.rightMargin: 12
            anchors.verticalCenter: parent.verticalCenter
            added: side.view.addedText
            removed: side.view.removedText
        }
    }
    ChangeList {
        id: list
        anchors.top: heading.bottom
        anchors.bottom: note.top
        width: parent.width
        focus: true
        visible: side.view.state === VersionView.Ready
        files: side.view.changes
        label: "커밋 안 한 변경"
        current: side.current
        rowHeight: Theme.px(28)
        onPicked: path => side.picked(path)
        onCopyAsked: text => side.view.copy(text)
    }
    Label {
        id: note
        anchors.bottom: foot.top
        x: 12
        width: parent.width - 24
        height: visible ? Theme.px(24) : 0
        visible: text.length > 0
        text: side.view.changesNote
        font: Theme.meta
        color: Theme.text3
    }
    Label {
        anchors.top: heading.bottom
        anchors.topMargin: 4
        x: 12
        width: parent.width - 24
        visible: text.length > 0
        text: side.view.changesSentence
        font: Theme.secondary
        color: Theme.text3
        wrapMode: Text.WordWrap
    }
    RequestsFoot {
        id: foot
        anchors.bottom: parent.bottom
        width: parent.width
        view: side.view
        compact: side.height < Theme.px(500)
        onAsked: kind => side.asked(kind)
    }
}
