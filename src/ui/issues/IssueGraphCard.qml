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

    // Of its edge, so that it is a pixel of the screen at every zoom: less is lost where it falls between two.
    property real line: 1
    // Letters drawn for the screen's own pixels lose strokes when they are scaled.
    property bool scaled: false
    readonly property int lettering: scaled ? Text.QtRendering : Text.NativeRendering

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
        radius: Theme.radius
        color: card.settled || card.context ? Theme.panel : hover.hovered ? Theme.hover : Theme.raised
        border.pixelAligned: false
        border.width: card.focused ? 2 * card.line : card.line
        border.color: card.focused ? Theme.accent : Theme.line2

        StatusMark {
            id: mark
            x: 10
            y: Theme.px(8)
            status: card.status
            size: 14
        }
        Label {
            anchors.left: mark.right
            anchors.leftMargin: 6
            anchors.right: noteLabel.left
            anchors.rightMargin: 6
            y: Theme.px(6)
            height: Theme.codeSmallLine
            text: card.issueId
            font: Theme.codeSmall
            renderType: card.lettering
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
            text: card.note
            font: Theme.meta
            renderType: card.lettering
            color: card.tones[card.tone]
            Accessible.ignored: true
        }
        StruckLabel {
            x: 10
            y: Theme.px(26)
            width: parent.width - 20
            height: Theme.px(24)
            text: card.title
            renderType: card.lettering
            struck: card.status === 5
            // A thinner one may cover no pixel as a whole: then the software renderer forgets to draw it again when
            // something below it is.
            thickness: card.scaled ? 2 * card.line : 1
            strength: card.scaled ? 0.5 : 1 // as much ink as a line of a pixel has
            color: card.settled ? Theme.text3 : Theme.text
            Accessible.ignored: true
        }
    }
}
