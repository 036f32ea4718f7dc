import QtQuick
import Vesk.Controls

// Text that can be selected and copied, with links.
TextEdit {
    id: edit

    required property string html
    // A mark at its end says that more is coming.
    property bool caret: false

    readonly property rect endOfText: caret && length >= 0 && contentHeight >= 0 && width > 0
        ? positionToRectangle(length) : Qt.rect(0, 0, 0, 0)

    text: html
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
    Accessible.name: getText(0, length)

    HoverHandler {
        cursorShape: edit.hoveredLink.length > 0 ? Qt.PointingHandCursor : Qt.IBeamCursor
    }
    HoverTip {
        control: edit
        wanted: edit.hoveredLink.length > 0
        text: edit.hoveredLink
    }
    Loader {
        x: Math.min(edit.endOfText.x + 2, edit.width - 7)
        y: Math.round(edit.endOfText.y + (edit.endOfText.height - 16) / 2)
        source: edit.caret ? "StreamCaret.qml" : ""
    }
}
