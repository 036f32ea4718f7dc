pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Version

// A commit, or the work tree above them all.
Item {
    id: row

    required property int index
    required property string hash
    required property string shortHash
    required property string subject
    required property var names
    required property string author
    required property string date
    required property var picture
    required property bool isMerge
    required property bool dimmed
    required property CommitColumns columns
    property bool current: false
    property bool ringed: false

    readonly property bool isWorkTree: index === 0
    readonly property color ground: current ? Theme.selected : hover.hovered ? Theme.hover : Theme.canvas

    signal picked()
    signal menuRequested(real x, real y)

    // By keyboard.
    function openMenu(): void {
        if (!isWorkTree)
            menuRequested(columns.subjectX, height)
    }

    width: ListView.view.width
    Accessible.role: Accessible.Row
    Accessible.name: {
        const words = names.map(name => name.name)
        words.push(subject)
        if (!isWorkTree)
            words.push(author, date, shortHash)
        return words.join(", ")
    }
    Accessible.selected: current
    Accessible.onPressAction: picked()

    HoverHandler { id: hover }
    TapHandler { onTapped: row.picked() }
    TapHandler {
        enabled: !row.isWorkTree
        acceptedButtons: Qt.RightButton
        onTapped: eventPoint => {
            row.picked()
            row.menuRequested(eventPoint.position.x, eventPoint.position.y)
        }
    }

    Rectangle {
        anchors.fill: parent
        color: row.ground

        FocusRing {
            visible: row.ringed
            gap: -2
            parentRadius: 0
        }
    }
    GraphCell {
        x: 4
        width: row.columns.graph - 4
        height: parent.height
        picture: row.picture
        ground: row.ground
        opacity: row.dimmed ? 0.4 : 1
    }
    RefChips {
        id: chips
        x: row.columns.subjectX
        height: parent.height
        opacity: row.dimmed ? 0.4 : 1
        names: row.names
        most: row.columns.mostNames
        room: row.columns.subject
        lane: row.picture.lane
    }
    Label {
        anchors.left: chips.right
        anchors.leftMargin: row.names.length > 0 ? 6 : 0
        width: Math.max(0, row.columns.subjectX + row.columns.subject - x)
        height: parent.height
        text: row.subject
        color: row.dimmed ? Theme.textOff : row.isMerge || row.isWorkTree ? Theme.text2 : Theme.text
        Accessible.ignored: true
    }
    Label {
        x: row.columns.authorX
        width: row.columns.author - 8
        visible: row.columns.author > 0
        height: parent.height
        text: row.author
        font: Theme.secondary
        color: row.dimmed ? Theme.textOff : Theme.text2
        Accessible.ignored: true
    }
    Label {
        x: row.columns.hashX
        width: row.columns.hash - 8
        visible: row.columns.hash > 0
        height: parent.height
        text: row.shortHash
        font: Theme.codeSmall
        color: row.dimmed ? Theme.textOff : Theme.text3
        Accessible.ignored: true
    }
    Label {
        x: row.columns.dateX
        width: row.columns.date
        visible: row.columns.date > 0
        height: parent.height
        text: row.date
        font: Theme.secondary
        color: row.dimmed ? Theme.textOff : Theme.text3
        horizontalAlignment: Text.AlignRight
        Accessible.ignored: true
    }
}
