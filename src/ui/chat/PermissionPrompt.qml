import QtQuick
import Vesk.Controls
import Vesk.Chat

// A tool that waits for permission: what it would do, what "always" would write, and the three answers.
PromptFrame {
    id: prompt

    required property PermissionCard card
    required property real detailRoom
    // For the whole card; in a low pane the details go short first.
    required property real space

    readonly property real rest: headHeight + body.topPadding + body.bottomPadding + caption.height + foot.height
        + (rules.visible ? rules.height + body.spacing : 0) + 2 * body.spacing + 2

    signal answered()

    title: card.title
    remoteText: card.remoteText
    since: card.since
    markKind: SessionMarks.WaitApproval
    Accessible.role: Accessible.AlertMessage
    Accessible.name: card.accessibleTitle

    Column {
        id: body
        width: parent.width
        leftPadding: 12
        rightPadding: 12
        topPadding: 10
        bottomPadding: 12
        spacing: 6

        Label {
            id: caption
            text: "실행 요청 상세"
            font: Theme.meta
            color: Theme.text3
        }
        PermissionDetails {
            width: parent.width - 24
            card: prompt.card
            room: Math.max(3 * Theme.codeLine + 16, Math.min(prompt.detailRoom, prompt.space - prompt.rest))
        }
        PermissionRules {
            id: rules
            width: parent.width - 24
            visible: prompt.card.canAlways
            card: prompt.card
        }
        Item {
            id: foot

            // In a narrow pane the answers stand above each other.
            readonly property bool stacked: width < denial.implicitWidth + 8 + answers.implicitWidth

            width: parent.width - 24
            height: answers.height + 8 + (stacked ? denial.height + 8 : 0)

            VButton {
                id: denial
                anchors.bottom: parent.bottom
                kind: VButton.Destructive
                text: "거부"
                keys: "Alt 3"
                tip: "이번 요청을 거부합니다"
                enterClicks: false
                onClicked: {
                    prompt.card.deny()
                    prompt.answered()
                }
            }
            Grid {
                id: answers
                y: 8
                anchors.right: parent.right
                columns: always.implicitWidth + 8 + once.implicitWidth > foot.width ? 1 : 2
                horizontalItemAlignment: Grid.AlignRight
                spacing: 8

                VButton {
                    id: always
                    visible: prompt.card.canAlways
                    text: "항상 허용"
                    keys: "Alt 2"
                    tip: "이 명령을 프로젝트 설정(.claude/settings.local.json)에 허용으로 저장 — 다음부터 안 묻습니다"
                    enterClicks: false
                    onClicked: {
                        prompt.card.allowAlways()
                        prompt.answered()
                    }
                }
                VButton {
                    id: once
                    kind: VButton.Primary
                    text: "한 번 허용"
                    keys: "Alt 1"
                    tip: "이번 한 번 허용합니다"
                    enterClicks: false
                    onClicked: {
                        prompt.card.allowOnce()
                        prompt.answered()
                    }
                }
            }
        }
    }
}
