import QtQuick
import Vesk.Controls
import Vesk.Chat

// Text that can be selected and copied, with links. Kept small: a conversation on the screen has hundreds.
TextEdit {
    id: edit

    required property string html
    property real lineHeight: Theme.readingLine

    text: MarkdownFormat.paragraph(html, Theme.accent, Theme.hover, Theme.code, lineHeight)
    textFormat: TextEdit.RichText
    readOnly: true
    selectByMouse: true
    selectByKeyboard: true
    activeFocusOnTab: false
    wrapMode: TextEdit.Wrap
    font: Theme.reading
    color: Theme.text
    selectionColor: Theme.selected
    selectedTextColor: Theme.text
    Accessible.role: Accessible.StaticText
    Accessible.name: MarkdownFormat.plainText(html)
}
