pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Vesk.Controls
import Vesk.Issues

// Finds an issue to name as a reference.
Popup {
    id: popup

    required property IssuesView view
    required property var without

    signal chosen(string id)

    function choose(row: int): void {
        const id = choice.idAt(row)
        if (id.length === 0)
            return
        close()
        chosen(id)
    }

    x: parent ? parent.width - width : 0
    y: parent ? parent.height + 4 : 0
    focus: true

    contentItem: Column {
        spacing: 4

        IssueRefChoice {
            id: choice
            view: popup.view
            without: popup.without
            query: field.text
        }
        TextField {
            id: field
            width: 320
            focus: true
            search: true
            placeholderText: "이을 이슈 찾기"
            onTextChanged: list.currentIndex = 0
            onSubmitted: popup.choose(list.currentIndex)
            Keys.onUpPressed: list.currentIndex = Math.max(0, list.currentIndex - 1)
            Keys.onDownPressed: list.currentIndex = Math.min(list.count - 1, list.currentIndex + 1)
        }
        ListView {
            id: list
            width: 320
            height: Math.min(contentHeight, Theme.px(28) * 8)
            clip: true
            boundsBehavior: Flickable.StopAtBounds
            model: choice.rows
            Accessible.role: Accessible.List
            Accessible.name: "이슈"

            delegate: T.AbstractButton {
                id: row

                required property int index
                required property string issueId
                required property string title
                required property int statusKind

                width: list.width
                height: Theme.px(28)
                focusPolicy: Qt.NoFocus
                Accessible.name: issueId + " " + title
                onClicked: popup.choose(index)

                contentItem: Item {
                    StatusMark {
                        id: mark
                        x: 8
                        anchors.verticalCenter: parent.verticalCenter
                        status: row.statusKind
                        size: 12
                    }
                    Label {
                        id: number
                        x: mark.x + mark.width + 8
                        height: parent.height
                        text: row.issueId
                        font: Theme.codeSmall
                        color: Theme.text2
                        Accessible.ignored: true
                    }
                    Label {
                        x: number.x + number.width + 8
                        width: parent.width - x - 8
                        height: parent.height
                        text: row.title
                        Accessible.ignored: true
                    }
                }
                background: Rectangle {
                    radius: Theme.radiusSmall
                    color: row.index === list.currentIndex ? Theme.selected : row.hovered ? Theme.hover : "transparent"
                }
            }
        }
        Label {
            visible: list.count === 0
            leftPadding: 8
            text: "맞는 이슈가 없습니다"
            font: Theme.secondary
            color: Theme.text3
        }
    }
}
