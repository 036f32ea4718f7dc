pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Chat

// One block of a Markdown text.
Item {
    id: block

    required property int index
    required property string kind
    required property string html
    required property string text
    required property string language
    required property string marker
    required property string task
    required property int level
    required property int quoteDepth
    required property int listDepth
    required property bool tight
    required property int columns
    required property var alignments
    required property var cells
    required property string droppedCells
    required property bool isLast
    property bool showsCaret: false

    readonly property bool isWords: kind === "paragraph" || kind === "heading" || kind === "item"
    readonly property real quoteWidth: quoteDepth * 12
    readonly property real inset: quoteWidth + listDepth * Theme.px(20)
    readonly property real gap: {
        if (index === 0)
            return 0
        if (kind === "heading")
            return 14
        return listDepth > 0 && tight ? 3 : 8
    }

    signal linkChosen(string link, string html)
    signal copyRequested()

    implicitHeight: gap + content.height

    Repeater {
        model: block.quoteDepth

        Rectangle {
            required property int index
            x: index * 12
            y: block.index === 0 ? 0 : block.gap - 8
            width: 2
            height: block.height - y
            color: Theme.line2
        }
    }
    Label {
        x: block.inset - width - 6
        y: block.gap
        height: Theme.readingLine
        visible: text.length > 0
        text: block.marker
        font: Theme.reading
        color: Theme.text
        Accessible.ignored: true
    }
    CheckMark {
        x: block.inset - width - 6
        y: block.gap + Math.round((Theme.readingLine - height) / 2)
        visible: block.task.length > 0
        checked: block.task === "done"
    }
    // One of these has an item, whichever the block is.
    Column {
        id: content
        x: block.inset
        y: block.gap
        width: block.width - block.inset

        Repeater {
            model: block.isWords ? 1 : 0

            MarkdownText {
                readonly property bool isTitle: block.kind === "heading"

                width: content.width
                html: MarkdownFormat.paragraph(block.html, Theme.accent, Theme.hover, Theme.code,
                                               isTitle && block.level === 1 ? Theme.issueTitleLine : Theme.readingLine)
                font: !isTitle ? Theme.reading : block.level === 1 ? Theme.issueTitle : Theme.readingBold
                color: block.quoteDepth > 0 ? Theme.text2 : Theme.text
                caret: block.showsCaret
                onLinkChosen: link => block.linkChosen(link, block.html)
            }
        }
        Repeater {
            model: block.kind === "code" ? 1 : 0

            CodeBlock {
                width: content.width
                text: block.text
                language: block.language
                caret: block.showsCaret
                onCopyRequested: block.copyRequested()
            }
        }
        Repeater {
            model: block.kind === "table" ? 1 : 0

            MarkdownTable {
                width: content.width
                columns: block.columns
                alignments: block.alignments
                cells: block.cells
                dropped: block.droppedCells
                onLinkChosen: (link, html) => block.linkChosen(link, html)
            }
        }
        Repeater {
            model: block.kind === "rule" ? 1 : 0

            Item {
                width: content.width
                implicitHeight: 9

                Hairline {
                    y: 4
                    width: parent.width
                }
            }
        }
    }
}
