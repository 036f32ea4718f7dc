import QtQuick
import Vesk.Controls
import Vesk.Issues

// One row of the list: a group's head, its settled issues, or an issue.
Item {
    id: item

    required property int index
    required property int kind
    required property string path
    required property string issueId
    required property string title
    required property string meta
    required property int statusKind
    required property string statusWord
    required property string ending
    required property int tone
    required property int done
    required property int total
    required property bool folded
    required property string unreadable
    required property IssuesView view
    property bool selected: false
    property bool ringed: false

    readonly property bool isHead: kind === 0
    readonly property bool isFold: kind === 3

    signal picked()

    function openStatusMenu(): void { (part.item as IssueRow)?.openStatusMenu() }

    width: ListView.view.width
    height: Theme.px(isHead ? 34 : isFold ? 30 : 46)
    Accessible.role: Accessible.ListItem
    Accessible.name: isHead || isFold ? title + " " + done + "/" + total
        : issueId + " " + title + ", " + statusWord + ", " + meta + ", " + ending + " " + unreadable
    Accessible.selected: selected
    Accessible.onPressAction: picked()

    HoverHandler { id: hover }
    TapHandler { onTapped: item.picked() }

    Rectangle {
        anchors.fill: parent
        anchors.leftMargin: 6
        anchors.rightMargin: 12
        radius: Theme.radius
        color: item.selected ? Theme.selected : hover.hovered && !item.isHead ? Theme.hover : "transparent"

        FocusRing {
            visible: item.ringed
            gap: -2
        }
    }
    Loader {
        id: part
        anchors.fill: parent
        Component.onCompleted: setSource(item.isHead || item.isFold ? "IssueGroupRow.qml" : "IssueRow.qml", { row: item })
    }
}
