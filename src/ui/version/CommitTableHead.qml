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
        text: "작성자"
    }
    ColumnName {
        x: head.columns.hashX
        width: head.columns.hash - 8
        text: "번호"
    }
    ColumnName {
        x: head.columns.dateX
        width: head.columns.date
        text: "때"
        horizontalAlignment: Text.AlignRight
    }

    Splitter {
        x: head.columns.graph + 5
        height: parent.height
        value: head.columns.graph
        from: 40
        to: Math.max(40, head.columns.room / 2)
        label: "그래프 칸 너비"
        onMoved: value => head.columns.measures.graph = value
    }
    Splitter {
        x: head.columns.authorX - 7
        height: parent.height
        value: head.columns.measures.author
        after: true
        from: 48
        to: 260
        label: "작성자 칸 너비"
        onMoved: value => head.columns.measures.author = value
    }
    Splitter {
        x: head.columns.hashX - 7
        height: parent.height
        value: head.columns.measures.hash
        after: true
        from: 48
        to: 320
        label: "번호 칸 너비"
        onMoved: value => head.columns.measures.hash = value
    }
    Splitter {
        x: head.columns.dateX - 7
        height: parent.height
        value: head.columns.measures.date
        after: true
        from: 60
        to: 240
        label: "때 칸 너비"
        onMoved: value => head.columns.measures.date = value
    }
    Hairline {
        anchors.bottom: parent.bottom
        width: parent.width
    }
}
