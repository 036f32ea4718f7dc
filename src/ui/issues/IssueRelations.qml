pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Issues

// The issues of one reference cell, with what is wrong with them, and a way to add one.
Column {
    id: relations

    required property string title
    required property bool waitsFor
    required property IssueRefRows rows
    required property IssueDetail detail

    spacing: 2

    Item {
        width: parent.width
        height: Theme.px(24)

        Label {
            height: parent.height
            text: relations.title
            font: Theme.meta
            color: Theme.text2
        }
        IconButton {
            id: plus
            anchors.right: parent.right
            side: 24
            iconSize: 12
            iconName: "plus"
            text: relations.title + " 더하기"
            onClicked: picker.setSource(Qt.resolvedUrl("IssueRefPicker.qml"), {
                parent: plus, view: relations.detail.view, without: relations.taken(), visible: true })
        }
        Loader { id: picker }
        Connections {
            target: picker.item as IssueRefPicker
            function onChosen(id: string): void { relations.detail.addRef(relations.waitsFor, id) }
            function onClosed(): void { picker.source = "" }
        }
    }
    Repeater {
        id: list
        model: relations.rows

        delegate: IssueRefRow {
            width: relations.width
            onTriggered: relations.detail.view.selectId(issueId)
        }
    }
    Label {
        visible: list.count === 0
        text: "없음"
        font: Theme.secondary
        color: Theme.text3
    }

    // Those that are named already, and the issue itself.
    function taken(): var {
        const ids = [detail.issueId]
        for (let i = 0; i < list.count; ++i)
            ids.push((list.itemAt(i) as IssueRefRow).issueId)
        return ids
    }
}
