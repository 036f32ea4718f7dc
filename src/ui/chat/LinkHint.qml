import QtQuick
import Vesk.Controls
import Vesk.Chat

// Where the link under the pointer or the keyboard leads.
Item {
    id: hint

    required property MarkdownColumn body

    HoverTip {
        control: hint.body.linkHintItem
        wanted: hint.body.linkHint.length > 0 && control !== null
        text: MarkdownFormat.shownAddress(hint.body.linkHint)
    }
}
