import QtQuick
import Vesk.Controls
import Vesk.Version

// Looks for words in the commits that are shown.
FocusScope {
    id: bar

    required property VersionView view

    signal found(int row)
    signal closed()

    readonly property CommitsModel commits: view.commits

    function open(): void {
        visible = true
        commits.query = field.text
        field.forceActiveFocus()
        field.selectAll()
    }
    function close(): void {
        visible = false
        commits.query = ""
        closed()
    }
    function go(step: int): void {
        const row = commits.matchFrom(commits.rowOf(view.selected), step)
        if (row >= 0)
            found(row)
    }

    visible: false
    implicitHeight: Theme.px(36)

    Rectangle {
        anchors.fill: parent
        color: Theme.panel
    }
    TextField {
        id: field
        x: 12
        anchors.verticalCenter: parent.verticalCenter
        width: Math.min(360, parent.width / 2)
        focus: true
        search: true
        placeholderText: "제목, 작성자, 번호, 브랜치"
        onTextChanged: {
            if (bar.visible)
                bar.commits.query = text
            if (text.length > 0 && bar.commits.matchNumber(bar.commits.rowOf(bar.view.selected)) === 0)
                bar.go(1)
        }
        onSubmitted: bar.go(1)
        Keys.onPressed: event => {
            event.accepted = !composing
            if (composing)
                return
            if (event.key === Qt.Key_Escape)
                bar.close()
            else if (event.key === Qt.Key_Down)
                bar.go(1)
            else if (event.key === Qt.Key_Up)
                bar.go(-1)
            else if ((event.key === Qt.Key_Return || event.key === Qt.Key_Enter) && event.modifiers & Qt.ShiftModifier)
                bar.go(-1)
            else
                event.accepted = false
        }
    }
    Row {
        anchors.left: field.right
        anchors.leftMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        spacing: 4

        Label {
            id: count
            anchors.verticalCenter: parent.verticalCenter
            width: Theme.px(72)
            text: bar.commits.query.length === 0 ? ""
                : bar.commits.matchCount === 0 ? "없음"
                : Math.max(0, bar.commits.matchNumber(bar.commits.rowOf(bar.view.selected))) + "/" + bar.commits.matchCount
            font: Theme.secondary
            color: Theme.text2
        }
        IconButton {
            iconName: "chevron-up"
            text: "이전"
            keys: "Shift F3"
            enabled: bar.commits.matchCount > 0
            onClicked: bar.go(-1)
        }
        IconButton {
            iconName: "chevron-down"
            text: "다음"
            keys: "F3"
            enabled: bar.commits.matchCount > 0
            onClicked: bar.go(1)
        }
    }
    IconButton {
        anchors.right: parent.right
        anchors.rightMargin: 4
        anchors.verticalCenter: parent.verticalCenter
        side: 24
        iconSize: 12
        iconName: "close"
        text: "찾기 닫기"
        keys: "Esc"
        onClicked: bar.close()
    }
    Hairline {
        anchors.bottom: parent.bottom
        width: parent.width
    }
}
