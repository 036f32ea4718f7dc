import QtQuick
import Vesk.Controls
import Vesk.Chat

// A line of a task's activity log; the latest stands out.
Item {
    id: row

    required property BackgroundEntry entry

    implicitHeight: Theme.codeSmallLine
    Accessible.ignored: true

    Label {
        x: 24 + Theme.px(16)
        width: parent.width - x - 16
        height: parent.height
        text: row.entry.title
        font: Theme.codeSmall
        color: row.entry.isLast ? Theme.text : Theme.text2
        Accessible.ignored: true
    }
}
