import QtQuick
import Vesk.Controls
import Vesk.Issues

// Number and title, how the text is shown, and the way into a session.
Item {
    id: head

    required property IssueDetail detail
    required property int mode

    signal modeChosen(int mode)

    // Too narrow for all in one line, the title has the first one for itself.
    readonly property bool narrow: width < number.implicitWidth + actions.implicitWidth + Theme.px(160)
    readonly property real lineHeight: Theme.px(32)

    implicitHeight: narrow ? lineHeight * 2 : lineHeight

    Label {
        id: number
        height: head.lineHeight
        text: head.detail.issueId
        font: Theme.code
        color: Theme.text3
    }
    Label {
        anchors.left: number.right
        anchors.leftMargin: 10
        width: (head.narrow ? head.width : actions.x - 12) - x
        height: head.lineHeight
        text: head.detail.title
        font: Theme.issueTitle
        Accessible.role: Accessible.Heading
        Accessible.name: text

        HoverTip {
            wanted: over.hovered && (parent as Label).truncated
            text: head.detail.title
        }
        HoverHandler { id: over }
    }
    Row {
        id: actions
        anchors.right: parent.right
        y: head.narrow ? head.lineHeight : 2
        spacing: 8

        SegmentedControl {
            label: "본문"
            labels: ["편집", "보기", "나란히"]
            icons: ["edit", "view", "split-right"]
            currentIndex: head.mode
            onActivated: index => head.modeChosen(index)
        }
        VButton {
            kind: VButton.Primary
            iconName: "play"
            text: "세션으로 열기"
            tip: "이 이슈를 처리할 새 세션을 엽니다. 보낼 말은 입력 칸에 채워 두고 보내지 않습니다."
            onClicked: head.detail.work()
        }
        IconButton {
            id: more
            iconName: "more"
            text: "이 이슈의 다른 일"
            Accessible.role: Accessible.ButtonMenu
            onClicked: menu.setSource(Qt.resolvedUrl("IssueDetailMenu.qml"), { detail: head.detail, anchor: more })
        }
    }
    Loader { id: menu }
    Connections {
        target: menu.item as IssueDetailMenu
        function onClosed(): void { menu.source = "" }
    }
}
