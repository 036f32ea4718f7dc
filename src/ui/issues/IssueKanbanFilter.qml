pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Issues

// The statuses with their counts; behind them those that no issue has, and where the other issues are.
Item {
    id: filter

    required property IssueKanbanModel board
    // The status under a card on its way; "-" for none.
    property string dropWord: "-"

    // The empty status at a place of the window; "-" for none.
    function vacantAt(scenePoint: point): string {
        const at = flow.mapFromItem(null, scenePoint)
        const chip = flow.childAt(at.x, at.y) as IssueKanbanChip
        return chip?.vacant ? chip.word : "-"
    }

    implicitHeight: Math.max(Theme.px(24), flow.implicitHeight) + 16

    Flow {
        id: flow
        x: 16
        y: 8
        width: (related.visible ? related.x : parent.width) - x - 12
        spacing: 6
        Accessible.role: Accessible.Grouping
        Accessible.name: "상태 거르기"

        Repeater {
            model: filter.board.chips

            delegate: IssueKanbanChip {
                dropTarget: vacant && filter.dropWord === word
                onClicked: filter.board.filterBy(index)
            }
        }
    }
    Label {
        id: related
        anchors.right: parent.right
        anchors.rightMargin: 16
        y: 8
        width: Math.min(implicitWidth, parent.width / 2)
        height: Theme.px(24)
        visible: text.length > 0
        text: filter.board.relatedText
        font: Theme.meta
        color: Theme.text2
    }
}
