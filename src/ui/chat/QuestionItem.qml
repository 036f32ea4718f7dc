pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Chat

// One question: its header, its options and the free answer.
Column {
    id: question

    required property QuestionForm form
    required property int index
    required property string header
    required property var model
    readonly property bool multi: model.multi
    readonly property QuestionOptions options: model.options

    spacing: 0

    Hairline {
        visible: question.index > 0
        width: parent.width
    }
    Item {
        width: parent.width
        height: Math.max(words.height, Theme.px(20)) + (question.index > 0 ? 20 : 10)

        Chip {
            id: chip
            x: 10
            y: question.index > 0 ? 12 : 2
            visible: question.header.length > 0
            text: question.header
        }
        Text {
            id: words
            x: chip.visible ? chip.x + chip.width + 8 : 10
            y: chip.y
            width: Math.min(implicitWidth, parent.width - x - (note.visible ? note.implicitWidth + 16 : 8))
            text: question.model.question
            textFormat: Text.PlainText
            font: Theme.uiBold
            color: Theme.text
            wrapMode: Text.Wrap
        }
        Label {
            id: note
            x: words.x + words.width + 8
            y: words.y
            height: Theme.uiLine
            visible: question.multi
            text: "여러 개 선택 가능"
            font: Theme.secondary
            color: Theme.text2
        }
    }
    Repeater {
        model: question.options

        QuestionOption {
            width: question.width
            multi: question.multi
            onClicked: question.form.choose(question.index, index)
        }
    }
    Item {
        width: parent.width
        height: field.height + 18

        RadioMark {
            x: 10
            anchors.verticalCenter: field.verticalCenter
            visible: !question.multi
            checked: question.model.otherChosen
        }
        CheckMark {
            x: 10
            anchors.verticalCenter: field.verticalCenter
            visible: question.multi
            checked: question.model.otherChosen
        }
        Item {
            width: field.x
            height: parent.height

            TapHandler {
                onTapped: {
                    question.form.chooseOther(question.index, !question.model.otherChosen)
                    field.forceActiveFocus()
                }
            }
        }
        TextField {
            id: field
            x: 10 + Theme.px(16) + 10
            y: 6
            width: parent.width - x - 10
            ground: Theme.canvas
            placeholderText: "직접 입력 (Other)"
            text: question.model.other
            onTextEdited: question.form.setOther(question.index, text)
            Accessible.name: question.model.question + " " + placeholderText
        }
    }
}
