import QtQuick
import Vesk.Controls

// What a section is called, and a sentence about it.
Column {
    id: head

    required property string title
    property string about

    bottomPadding: 4

    Label {
        width: head.width - Theme.px(36)
        height: Theme.pageTitleLine
        text: head.title
        font: Theme.pageTitle
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }
    Label {
        width: head.width
        visible: text.length > 0
        text: head.about
        font: Theme.secondary
        color: Theme.text2
        wrapMode: Text.Wrap
        elide: Text.ElideNone
    }
}
