pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Chat

// The first words of a list item, with its bullet, number or box.
Item {
    id: item

    required property string html
    required property string marker
    required property string task
    required property bool quoted

    readonly property alias textItem: words

    implicitHeight: words.height

    Label {
        x: -width - 6
        height: Theme.readingLine
        text: item.marker
        font: Theme.reading
        Accessible.ignored: true
    }
    Repeater {
        model: item.task.length > 0 ? 1 : 0

        CheckMark {
            x: -width - 6
            y: Math.round((Theme.readingLine - height) / 2)
            checked: item.task === "done"
        }
    }
    MarkdownText {
        id: words
        width: item.width
        html: item.html
        color: item.quoted ? Theme.text2 : Theme.text
    }
}
