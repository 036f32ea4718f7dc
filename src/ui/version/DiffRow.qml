import QtQuick
import Vesk.Controls
import Vesk.Version

// A line of a difference: two numbers, sign, text.
Item {
    id: row

    required property int index
    required property int kind
    required property string text
    required property string oldNumber
    required property string newNumber
    required property string sign
    required property string clipped
    required property var emphasis
    property bool chosen: false
    property real scrolled: 0
    property int numberWidth: Theme.px(42)

    readonly property bool isAdded: kind === DiffModel.Added
    readonly property bool isRemoved: kind === DiffModel.Removed
    readonly property bool isHunk: kind === DiffModel.Hunk
    readonly property bool isAside: kind === DiffModel.Meta || kind === DiffModel.NoNewline || kind === DiffModel.Remark
    readonly property color ground: isAdded ? Theme.diffAdded : isRemoved ? Theme.diffRemoved
        : isHunk ? Theme.diffHunk : Theme.canvas

    signal picked(bool extend)

    width: ListView.view.width
    height: kind === DiffModel.Remark ? Theme.px(28) : Theme.codeLine
    Accessible.role: Accessible.ListItem
    Accessible.name: (isAdded ? "추가 " + newNumber + " " : isRemoved ? "삭제 " + oldNumber + " " : "") + text
        + (clipped.length > 0 ? " " + clipped : "")
    Accessible.selected: chosen

    TapHandler {
        gesturePolicy: TapHandler.ReleaseWithinBounds
        onTapped: row.picked(point.modifiers & Qt.ShiftModifier)
    }

    Rectangle {
        anchors.fill: parent
        color: row.ground
    }
    Rectangle {
        visible: row.chosen
        width: 3
        height: parent.height
        color: Theme.accent
    }
    Label {
        width: row.numberWidth - 10
        height: parent.height
        text: row.oldNumber
        font: Theme.codeSmall
        color: Theme.text3
        horizontalAlignment: Text.AlignRight
        Accessible.ignored: true
    }
    Label {
        x: row.numberWidth
        width: row.numberWidth - 10
        height: parent.height
        text: row.newNumber
        font: Theme.codeSmall
        color: Theme.text3
        horizontalAlignment: Text.AlignRight
        Accessible.ignored: true
    }
    Label {
        x: row.numberWidth * 2
        width: Theme.px(16)
        height: parent.height
        text: row.sign
        font: Theme.code
        color: row.isAdded ? Theme.diffAddedMark : Theme.diffRemovedMark
        horizontalAlignment: Text.AlignHCenter
        Accessible.ignored: true
    }
    Item {
        x: row.numberWidth * 2 + Theme.px(20)
        width: parent.width - x
        height: parent.height
        clip: true

        DiffText {
            id: words
            width: parent.width
            height: parent.height
            text: row.text
            emphasis: row.emphasis
            font: row.isAside ? Theme.secondary : Theme.code
            offset: row.scrolled
            ink: row.isHunk ? Theme.diffHunkText : row.isAside ? Theme.text3 : Theme.text
            mark: row.isAdded ? Theme.diffAddedWords : Theme.diffRemovedWords
        }
        // Where the line ends, or at the edge as long as it ends beyond.
        Rectangle {
            x: Math.min(words.textWidth - row.scrolled, parent.width - width)
            width: cut.implicitWidth + 22
            height: parent.height
            visible: row.clipped.length > 0
            color: row.ground

            Label {
                id: cut
                x: 8
                height: parent.height
                text: row.clipped
                font: Theme.meta
                color: Theme.warning
                Accessible.ignored: true
            }
        }
    }
}
