import QtQuick
import Vesk.Controls
import Vesk.Chat

// What a task reported: its first lines, all of it when the task is open.
Label {
    required property BackgroundEntry entry

    leftPadding: 24 + Theme.px(16)
    rightPadding: 16
    topPadding: 1
    bottomPadding: 4
    text: entry.title
    font: Theme.secondary
    color: Theme.text2
    lineHeight: Theme.secondaryLine
    lineHeightMode: Text.FixedHeight
    wrapMode: Text.Wrap
    maximumLineCount: entry.isOpen ? 1000 : 3
    verticalAlignment: Text.AlignTop
    Accessible.ignored: true
}
