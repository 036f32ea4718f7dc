import QtQuick
import Vesk.Controls

// One setting: its name, a sentence about it, and at the right the control. Where there is no room for both side by
// side, the control goes below.
Item {
    id: row

    required property string title
    property string about
    // Off in the first row of a card.
    property bool ruled: true
    default property alias control: holder.data

    readonly property Item held: holder.children.length > 0 ? holder.children[0] : null
    readonly property real heldWidth: held ? held.implicitWidth : 0
    readonly property bool stacked: heldWidth + Math.max(name.implicitWidth, Theme.px(200)) + 48 > width

    width: parent ? (parent as Item).width : 0
    height: Math.max(Theme.px(44), words.height + 16 + (stacked ? holder.height + 8 : 0))

    Hairline {
        width: parent.width
        visible: row.ruled
    }
    Column {
        id: words
        x: 16
        y: row.stacked ? 8 : Math.round((row.height - height) / 2)
        width: row.width - 32 - (row.stacked || row.heldWidth === 0 ? 0 : row.heldWidth + 16)

        Label {
            id: name
            width: parent.width
            height: Theme.uiLine
            text: row.title
            Accessible.ignored: true
        }
        Label {
            width: parent.width
            visible: text.length > 0
            text: row.about
            font: Theme.meta
            color: Theme.text2
            wrapMode: Text.Wrap
            elide: Text.ElideNone
            Accessible.ignored: true
        }
    }
    Item {
        id: holder
        x: row.stacked ? 16 : row.width - 16 - width
        y: row.stacked ? words.y + words.height + 8 : Math.round((row.height - height) / 2)
        width: row.stacked ? Math.min(row.heldWidth, row.width - 32) : row.heldWidth
        height: row.held ? row.held.implicitHeight : 0
    }
}
