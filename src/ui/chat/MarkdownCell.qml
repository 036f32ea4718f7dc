import QtQuick
import Vesk.Controls
import Vesk.Chat

// One cell of a table.
Rectangle {
    id: cell

    required property string html
    required property int alignment
    required property bool isHead

    signal linkChosen(string link, string html)

    implicitWidth: 40
    implicitHeight: Theme.uiLine + 8
    color: isHead ? Theme.panel : Theme.canvas

    MarkdownText {
        id: words
        x: 8
        y: 4
        width: cell.width - 16
        html: cell.html
        lineHeight: Theme.uiLine
        font: cell.isHead ? Theme.uiBold : Theme.ui
        horizontalAlignment: cell.alignment
        activeFocusOnTab: cell.html.includes("<a ")
        onLinkActivated: link => cell.linkChosen(link, cell.html)
    }
    TextLinks {
        id: keys
        item: words
        document: words.textDocument
        onChosenChanged: (start, end) => words.select(start, end)
        onFollowed: address => cell.linkChosen(address, cell.html)
    }
    HoverTip {
        control: words
        wanted: text.length > 0
        text: MarkdownFormat.shownAddress(words.hoveredLink.length > 0 ? words.hoveredLink : keys.address)
    }
}
