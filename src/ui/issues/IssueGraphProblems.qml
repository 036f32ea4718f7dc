pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Issues

// What is wrong with the declarations; a choice opens the issue whose cell is to be mended.
Popup {
    id: popup

    required property IssueGraphModel graph

    y: parent ? parent.height + 4 : 0
    focus: true

    contentItem: ListView {
        id: list
        implicitWidth: 460
        implicitHeight: Math.min(contentHeight, 320)
        clip: true
        focus: true
        boundsBehavior: Flickable.StopAtBounds
        keyNavigationEnabled: true
        highlightMoveDuration: 0
        model: popup.graph.problems
        Accessible.role: Accessible.List
        Accessible.name: "관계 문제"

        function openAt(row: Item): void {
            const issue = (row as ProblemRow)?.issue ?? ""
            popup.close()
            popup.graph.openIssue(issue)
        }
        Keys.onReturnPressed: openAt(currentItem)
        Keys.onEnterPressed: openAt(currentItem)

        delegate: ProblemRow {
            onChosen: list.openAt(this)
        }
    }

    component ProblemRow: Rectangle {
        id: row

        required property string message
        required property string issue

        signal chosen()

        width: ListView.view.width
        implicitHeight: words.implicitHeight + 12
        radius: Theme.radiusSmall
        color: ListView.isCurrentItem || hover.hovered ? Theme.selected : "transparent"
        Accessible.role: Accessible.ListItem
        Accessible.name: message
        Accessible.onPressAction: chosen()

        HoverHandler { id: hover }
        TapHandler { onTapped: row.chosen() }
        Icon {
            x: 8
            y: 8
            name: "warning"
            size: 14
            color: Theme.warning
        }
        Label {
            id: words
            x: 8 + Theme.px(14) + 8
            y: 6
            width: parent.width - x - 8
            text: row.message
            font: Theme.secondary
            lineHeight: Theme.secondaryLine
            lineHeightMode: Text.FixedHeight
            wrapMode: Text.WordWrap
            elide: Text.ElideNone
            Accessible.ignored: true
        }
    }
}
