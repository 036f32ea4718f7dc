import QtQuick
import Vesk.Controls
import Vesk.Version

// The names of the columns, and the lines that move them.
Item {
    id: head

    required property CommitColumns columns

    implicitHeight: Theme.px(26)

    Rectangle {
        anchors.fill: parent
        color: Theme.panel
    }
    ColumnName {
        x: 12
        width: head.columns.graph - 12
        text: "그래프"
    }
    ColumnName {
        x: head.columns.subjectX
        width: head.columns.subject
        text: "커밋"
    }
    ColumnName {
        x: head.columns.authorX
        width: head.columns.author - 8
        visible: head.columns.author > 0
        text: "작성자"
    }
    ColumnName {
        x: head.columns.hashX
        width: head.columns.hash - 8
        visible: head.columns.hash > 0
        text: "번호"
    }
    ColumnName {
        x: head.columns.dateX
        width: head.columns.date
        visible: head.columns.date > 0
        text: "때"
        horizontalAlignment: Text.AlignRight
    }

    Splitter {
        x: head.columns.graph + 5
        height: parent.height
        value: head.columns.graph
        from: 40
        to: Math.max(40, Math.min(head.columns.room / 2, head.columns.graph + head.columns.spare))
        label: "그래프 칸 너비"
        onMoved: value => head.columns.measures.graph = value
    }
    Splitter {
        x: head.columns.authorX - 7
        height: parent.height
        visible: head.columns.author > 0
        value: head.columns.author
        after: true
        from: Theme.px(48)
        to: Math.min(Theme.px(260), head.columns.author + head.columns.spare)
        label: "작성자 칸 너비"
        onMoved: value => head.columns.measures.author = value / Theme.scale
    }
    Splitter {
        x: head.columns.hashX - 7
        height: parent.height
        visible: head.columns.hash > 0
        value: head.columns.hash
        after: true
        from: Theme.px(48)
        to: Math.min(Theme.px(320), head.columns.hash + head.columns.spare)
        label: "번호 칸 너비"
        onMoved: value => head.columns.measures.hash = value / Theme.scale
    }
    Splitter {
        x: head.columns.dateX - 7
        height: parent.height
        visible: head.columns.date > 0
        value: head.columns.date
        after: true
        from: Theme.px(60)
        to: Math.min(Theme.px(240), head.columns.date + head.columns.spare)
        label: "때 칸 너비"
        onMoved: value => head.columns.measures.date = value / Theme.scale
    }
    Hairline {
        anchors.bottom: parent.bottom
        width: parent.width
    }
}
