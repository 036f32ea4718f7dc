import QtQuick
import Vesk.Controls
import Vesk.Chat

// Code as it was written, with its language and a way to copy it.
Rectangle {
    id: box

    required property string text
    required property string language
    // What of the code is not drawn, in words.
    property string rest
    // Long code that still grows gets its colours when it is whole.
    property bool settled: true

    readonly property alias textItem: words

    signal copyRequested()

    implicitHeight: head.height + words.height + foot.height + 16
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
        html: ""
        text: box.settled || box.text.length < 4000
            ? MarkdownFormat.colouredCode(box.text, box.language, Theme.codeInks, Theme.codeLine)
            : MarkdownFormat.codeLines(box.text, Theme.codeLine)
        font: Theme.code
        wrapMode: TextEdit.WrapAnywhere
        Accessible.name: box.text
    }
    Label {
        id: foot
        anchors.top: words.bottom
        x: 12
        width: box.width - 24
        height: text.length > 0 ? Theme.secondaryLine + 4 : 0
        text: box.rest
        verticalAlignment: Text.AlignBottom
        font: Theme.secondary
        color: Theme.text3
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
