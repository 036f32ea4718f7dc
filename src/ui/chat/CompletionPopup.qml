pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Vesk.Controls
import Vesk.Chat

// What could stand for the word at the caret. The keyboard stays with the editor, which hands the keys on.
Popup {
    id: popup

    required property ComposerCompletion completion
    readonly property int rows: Math.min(list.count, 8)

    padding: 5
    focus: false
    closePolicy: T.Popup.NoAutoClose

    contentItem: Column {
        ListView {
            id: list
            objectName: "completions"
            width: parent.width
            height: popup.rows * Theme.px(30)
            model: popup.completion.model
            currentIndex: popup.completion.highlighted
            highlightFollowsCurrentItem: false
            boundsBehavior: Flickable.StopAtBounds
            clip: true
            T.ScrollBar.vertical: ScrollBar {}
            onCurrentIndexChanged: positionViewAtIndex(currentIndex, ListView.Contain)
            Accessible.role: Accessible.List
            Accessible.name: popup.completion.namesFiles ? "파일" : "명령"

            delegate: CompletionRow {
                id: row

                required property int index

                width: list.width - (list.count > popup.rows ? 12 : 0)
                isFile: popup.completion.namesFiles
                highlighted: row.index === popup.completion.highlighted
                onTaken: popup.completion.take(row.index)
            }
        }
        Hairline {
            width: parent.width
        }
        Item {
            width: parent.width
            height: Theme.px(26)

            Label {
                x: 10
                width: parent.width - 2 * x - amount.width
                height: parent.height
                text: "↑↓ 고르기 · Tab 또는 Enter 넣기 · Esc 닫기"
                font: Theme.meta
                color: Theme.text3
            }
            Label {
                id: amount
                anchors.right: parent.right
                anchors.rightMargin: 10
                height: parent.height
                visible: !popup.completion.namesFiles
                text: list.count + "개"
                font: Theme.meta
                color: Theme.text3
            }
        }
    }
}
