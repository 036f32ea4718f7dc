import QtQuick
import QtQuick.Templates as T
import Vesk.Controls
import Vesk.Chat

// The output of a tool: up to twelve lines, then it scrolls within.
Rectangle {
    id: box

    required property string text

    implicitHeight: Math.min(words.implicitHeight, 12 * Theme.codeSmallLine) + 12
    radius: Theme.radius
    color: Theme.well

    Flickable {
        id: flick
        anchors.fill: parent
        anchors.margins: 6
        anchors.leftMargin: 10
        contentHeight: words.implicitHeight
        boundsBehavior: Flickable.StopAtBounds
        interactive: contentHeight > height
        clip: true

        MarkdownText {
            id: words
            width: flick.width - 10
            html: ""
            text: MarkdownFormat.codeLines(box.text, Theme.codeSmallLine)
            font: Theme.codeSmall
            color: Theme.text2
            wrapMode: TextEdit.WrapAnywhere
            Accessible.name: box.text
        }
        T.ScrollBar.vertical: ScrollBar {}
    }
}
