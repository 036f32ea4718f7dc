import QtQuick
import Vesk.Controls
import Vesk.Chat

// A line of a task's activity log; the latest stands out.
Label {
    required property BackgroundEntry entry

    implicitHeight: Theme.codeSmallLine
    leftPadding: 24 + Theme.px(16)
    rightPadding: 16
    text: entry.title
    font: Theme.codeSmall
    color: entry.isLast ? Theme.text : Theme.text2
    Accessible.ignored: true
}
