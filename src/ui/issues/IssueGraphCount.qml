import QtQuick
import Vesk.Controls

// How many issues of a graph stand so; without room, the number alone.
Row {
    id: count

    required property int value
    required property string word
    required property color ink
    required property bool worded

    height: parent?.height ?? 0
    spacing: 5

    Label {
        height: count.height
        text: count.value
        font: Theme.secondaryBold
        color: count.ink
        Accessible.name: count.value + " " + count.word
    }
    Label {
        height: count.height
        visible: count.worded
        text: count.word
        font: Theme.secondary
        color: Theme.text2
    }
}
