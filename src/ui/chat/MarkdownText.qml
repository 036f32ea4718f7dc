import QtQuick
import Vesk.Controls
import Vesk.Chat

// Text that can be selected and copied, with links: by the pointer, or by Tab from one to the next.
TextEdit {
    id: edit

    required property string html
    // A mark at its end says that more is coming.
    property bool caret: false

    readonly property rect endOfText: caret && length >= 0 && contentHeight >= 0 && width > 0
        ? positionToRectangle(length) : Qt.rect(0, 0, 0, 0)

    signal linkChosen(string link)

    text: html
    onLinkActivated: link => linkChosen(link)
    textFormat: TextEdit.RichText
    readOnly: true
    selectByMouse: true
    selectByKeyboard: true
    activeFocusOnTab: html.includes("<a ")
    wrapMode: TextEdit.Wrap
    font: Theme.reading
    color: Theme.text
    selectionColor: Theme.selected
    selectedTextColor: Theme.text
    Accessible.role: Accessible.StaticText
    Accessible.name: getText(0, length)

    HoverHandler {
        cursorShape: edit.hoveredLink.length > 0 ? Qt.PointingHandCursor : Qt.IBeamCursor
    }
    HoverTip {
        control: edit
        wanted: text.length > 0
        text: MarkdownFormat.shownAddress(edit.hoveredLink.length > 0 ? edit.hoveredLink : keys.address)
    }
    TextLinks {
        id: keys
        item: edit
        document: edit.textDocument
        onChosenChanged: (start, end) => edit.select(start, end)
        onFollowed: address => edit.linkChosen(address)
    }
    Loader {
        x: Math.min(edit.endOfText.x + 2, edit.width - 7)
        y: Math.round(edit.endOfText.y + (edit.endOfText.height - 16) / 2)
        source: edit.caret ? "StreamCaret.qml" : ""
    }
}
