import QtQuick
import Vesk.Chat

// The mark behind the last word of a text that is still growing.
Item {
    id: caret

    required property MarkdownColumn body

    readonly property TextEdit edit: body.lastText as TextEdit
    readonly property rect end: edit && edit.length >= 0 && edit.contentHeight >= 0 && edit.width > 0
        ? edit.positionToRectangle(edit.length) : Qt.rect(0, 0, 0, 0)

    StreamCaret {
        parent: caret.edit ?? caret
        // It stands in the text itself, which stays when this is no longer wanted.
        visible: caret.visible && caret.edit !== null
        x: Math.min(caret.end.x + 2, (caret.edit?.width ?? 0) - 7)
        y: Math.round(caret.end.y + (caret.end.height - 16) / 2)
    }
}
