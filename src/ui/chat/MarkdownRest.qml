import QtQuick
import Vesk.Controls
import Vesk.Chat

// What of a very long text is not on the screen: the way to the next part, and what was dropped for good.
Column {
    id: rest

    required property MarkdownColumn body
    required property MarkdownBlockModel blocks

    topPadding: 8
    spacing: 4

    VButton {
        visible: rest.body.hiddenCount > 0
        text: "더 보기 — 남은 문단 " + rest.body.hiddenCount + "개"
        onClicked: rest.body.showMore()
    }
    Label {
        visible: text.length > 0
        text: rest.blocks.droppedText
        font: Theme.secondary
        color: Theme.text3
    }
}
