import QtQuick
import Vesk.Controls
import Vesk.Chat

// A note of the system: between two lines when it is short.
Item {
    id: item

    required property TimelineRow row

    readonly property bool isShort: words.implicitWidth < width - 80
    readonly property real lineWidth: Math.max(0, (width - words.width) / 2 - 12)

    implicitHeight: Math.max(Theme.secondaryLine, words.height)
    Accessible.role: Accessible.ListItem
    Accessible.name: row.accessibleText

    Hairline {
        visible: item.isShort
        y: Math.round(parent.height / 2)
        width: item.lineWidth
    }
    Text {
        id: words
        x: item.isShort ? Math.round((item.width - width) / 2) : 2
        width: item.isShort ? implicitWidth : item.width - 4
        text: item.row.text
        textFormat: Text.PlainText
        font: Theme.secondary
        color: Theme.text2
        lineHeight: Theme.secondaryLine
        lineHeightMode: Text.FixedHeight
        wrapMode: Text.Wrap
        Accessible.ignored: true
    }
    Hairline {
        visible: item.isShort
        x: item.width - width
        y: Math.round(parent.height / 2)
        width: item.lineWidth
    }
}
