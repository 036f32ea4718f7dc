pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Chat

// A Markdown text, block by block: a change of one block lays out that block alone.
Column {
    id: column

    required property MarkdownBlockModel blocks
    property bool caret: false

    signal linkChosen(string link, string html)

    Repeater {
        model: column.blocks

        MarkdownBlock {
            width: column.width
            showsCaret: column.caret && isLast
            onLinkChosen: (link, html) => column.linkChosen(link, html)
            onCopyRequested: column.blocks.copyBlock(index)
        }
    }
    Label {
        visible: text.length > 0
        topPadding: 8
        text: column.blocks ? column.blocks.droppedText : ""
        font: Theme.secondary
        color: Theme.text3
    }
}
