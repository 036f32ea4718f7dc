import QtQuick
import Vesk.Controls
import Vesk.Issues

// An issue in the graph: mark, number and note, below them the title.
Item {
    id: card

    required property string key
    required property string issueId
    required property string title
    required property int status
    required property string note
    required property int tone
    required property rect frame
    required property bool inChain
    required property bool focused
    required property bool context
    required property bool settled
    // Too small to be read: the mark alone is shown, larger.
    property bool tiny: false

    readonly property list<color> tones: [Theme.text3, Theme.success, Theme.warning, Theme.danger]

    signal chosen()

    x: frame.x
    y: frame.y
    width: frame.width
    height: frame.height
    opacity: inChain || focused || hover.hovered ? 1 : 0.6
    Accessible.role: Accessible.Button
    Accessible.name: issueId + ", " + title + (note.length > 0 ? ", " + note : "")
    Accessible.selected: focused
    Accessible.onPressAction: chosen()

    HoverHandler { id: hover }

    // The letters have the text size already, which the whole picture has too.
    Rectangle {
        width: card.width * Theme.scale
        height: card.height * Theme.scale
        scale: 1 / Theme.scale
        transformOrigin: Item.TopLeft
        radius: card.tiny ? 0 : Theme.radius
        color: card.settled || card.context ? Theme.panel : hover.hovered ? Theme.hover : Theme.raised
        border.width: card.focused ? 2 : 1
        border.color: card.focused ? Theme.accent : Theme.line2

        StatusMark {
            id: mark
            x: 10
            y: card.tiny ? (parent.height - height) / 2 : Theme.px(8)
            smooth: !card.tiny
            status: card.status
            size: card.tiny ? 30 : 14
        }
        Label {
            anchors.left: mark.right
            anchors.leftMargin: 6
            anchors.right: noteLabel.left
            anchors.rightMargin: 6
            y: Theme.px(6)
            height: Theme.codeSmallLine
            visible: !card.tiny
            text: card.issueId
            font: Theme.codeSmall
            color: Theme.text2
            Accessible.ignored: true
        }
        Label {
            id: noteLabel
            anchors.right: parent.right
            anchors.rightMargin: 10
            y: Theme.px(6)
            width: Math.min(implicitWidth, parent.width * 0.6)
            height: Theme.codeSmallLine
            visible: !card.tiny
            text: card.note
            font: Theme.meta
            color: card.tones[card.tone]
            Accessible.ignored: true
        }
        Label {
            x: 10
            y: Theme.px(26)
            width: parent.width - 20
            height: Theme.px(24)
            visible: !card.tiny
            text: card.title
            font.strikeout: card.status === 5
            color: card.settled ? Theme.text3 : Theme.text
            Accessible.ignored: true
        }
    }
}
