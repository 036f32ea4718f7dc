import QtQuick
import Vesk.Controls
import Vesk.Chat

// A paragraph or a heading.
MarkdownText {
    id: words

    required property string source
    required property string note
    required property int level
    required property bool quoted

    readonly property Item textItem: words

    html: note.length === 0 ? source : source + MarkdownFormat.note(note, Theme.text3, Theme.secondary)
    font: level === 0 ? Theme.reading : level === 1 ? Theme.issueTitle : Theme.readingBold
    lineHeight: level === 1 ? Theme.issueTitleLine : Theme.readingLine
    color: quoted ? Theme.text2 : Theme.text
    Accessible.role: level > 0 ? Accessible.Heading : Accessible.StaticText
}
