pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Vesk.Controls
import Vesk.Chat

// The agent's questions, answered together.
PromptFrame {
    id: prompt

    required property QuestionForm form
    required property real questionRoom
    // For the whole card.
    required property real space

    signal answered()

    title: form.title
    remoteText: form.remoteText
    since: form.since
    markKind: SessionMarks.WaitAnswer
    Accessible.role: Accessible.AlertMessage
    Accessible.name: form.title

    Keys.onPressed: event => {
        const isEnter = event.key === Qt.Key_Return || event.key === Qt.Key_Enter
        if (isEnter && event.modifiers & Qt.ControlModifier) {
            event.accepted = true
            prompt.submit()
        } else if (event.modifiers === Qt.NoModifier && event.key >= Qt.Key_1 && event.key <= Qt.Key_9) {
            event.accepted = prompt.form.chooseDigit(event.key - Qt.Key_0)
        }
    }

    function submit(): void {
        if (form.allAnswered) {
            form.sendAnswers()
            answered()
        }
    }

    Item {
        width: parent.width
        implicitHeight: flick.height + foot.height

        Flickable {
            id: flick
            width: parent.width
            height: Math.min(contentHeight, Math.max(Theme.px(96), Math.min(prompt.questionRoom,
                                                                            prompt.space - prompt.headHeight - foot.height - 2)))
            contentHeight: list.implicitHeight
            boundsBehavior: Flickable.StopAtBounds
            interactive: contentHeight > height
            clip: true
            T.ScrollBar.vertical: ScrollBar {}

            Column {
                id: list
                width: flick.width
                leftPadding: 12
                rightPadding: 12
                topPadding: 10

                Repeater {
                    model: prompt.form

                    QuestionItem {
                        width: list.width - 24
                        form: prompt.form
                    }
                }
            }
        }
        Item {
            id: foot
            anchors.bottom: parent.bottom
            width: parent.width
            height: Theme.px(28) + 22

            VButton {
                x: 12
                y: 10
                kind: VButton.Quiet
                text: "답 없이 진행"
                tip: "답하지 않고 진행합니다 — 에이전트에 '선택 안 함'으로 전달(세션이 멈추지 않게)"
                enterClicks: false
                onClicked: {
                    prompt.form.skip()
                    prompt.answered()
                }
            }
            Row {
                anchors.right: parent.right
                anchors.rightMargin: 12
                y: 10
                spacing: 8

                Label {
                    anchors.verticalCenter: parent.verticalCenter
                    text: prompt.form.progressText
                    font: Theme.secondary
                    color: Theme.text2
                }
                VButton {
                    kind: VButton.Primary
                    enabled: prompt.form.allAnswered
                    text: "답 보내기"
                    keys: "Ctrl Enter"
                    tip: "선택한 답을 에이전트에 전달"
                    enterClicks: false
                    onClicked: prompt.submit()
                }
            }
        }
    }
}
