import QtQuick
import Vesk.Controls
import Vesk.Chat

// A Markdown text, block by block, and what was left out of it.
Column {
    id: column

    required property MarkdownBlockModel blocks
    property bool caret: false
    // Tasks can be ticked.
    property bool tickable: false

    signal linkChosen(string link, string html)
    signal ticked(int block)

    function hasLinkIn(area: rect): bool { return body.hasLinkIn(area) }

    MarkdownColumn {
        id: body
        width: column.width
        blocks: column.blocks
        listIndent: Theme.px(20)
        tickable: column.tickable
        onTicked: block => column.ticked(block)
        onLinkChosen: (link, html) => column.linkChosen(link, html)
    }
    Lazy {
        file: Qt.resolvedUrl("MarkdownRest.qml")
        width: column.width
        wanted: body.hiddenCount > 0 || column.blocks.droppedText.length > 0
        properties: ({ body: body, blocks: column.blocks })
    }
    Lazy {
        file: Qt.resolvedUrl("LinkHint.qml")
        wanted: body.linkHint.length > 0
        height: 0
        properties: ({ body: body })
    }
    Lazy {
        file: Qt.resolvedUrl("TextCaret.qml")
        wanted: column.caret
        height: 0
        properties: ({ body: body })
    }
}
