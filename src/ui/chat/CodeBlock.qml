import QtQuick
import Vesk.Controls
import Vesk.Chat

// Code as it was written, with its language and a way to copy it.
Rectangle {
    id: box

    required property string text
    required property string language
    property bool caret: false

    signal copyRequested()

    implicitHeight: head.height + words.height + 16
    radius: Theme.radius
    color: Theme.well
    border.color: Theme.line

    HoverHandler {
        id: hover
    }
    Label {
        id: head
        x: 12
        y: 8
        height: text.length > 0 ? Theme.metaLine + 4 : 0
        text: box.language
        verticalAlignment: Text.AlignTop
        font: Theme.meta
        color: Theme.text3
    }
    MarkdownText {
        id: words
        anchors.top: head.bottom
        x: 12
        width: box.width - 24
        html: MarkdownFormat.codeLines(box.text, Theme.codeLine)
        font: Theme.code
        wrapMode: TextEdit.WrapAnywhere
        caret: box.caret
        Accessible.name: box.text
    }
    CopyButton {
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.margins: 4
        shown: hover.hovered
        text: "코드 복사"
        onClicked: box.copyRequested()
    }
}
