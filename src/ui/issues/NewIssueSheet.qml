pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Issues

// A new issue: number, title, the fields of the folder's skeleton, relations.
Dialog {
    id: sheet

    required property IssuesView view

    function submit(): void {
        if (form.canCreate && form.create())
            close()
    }

    title: "새 이슈"
    implicitWidth: 560
    Component.onCompleted: titleField.focus = true

    contentItem: Column {
        spacing: 4

        Keys.onPressed: event => {
            event.accepted = event.modifiers & Qt.ControlModifier
                && (event.key === Qt.Key_Return || event.key === Qt.Key_Enter)
            if (event.accepted)
                sheet.submit()
        }

        NewIssueForm {
            id: form
            view: sheet.view
        }
        FieldLabel { text: "번호" }
        Row {
            width: parent.width
            spacing: 8

            Label {
                height: numberField.height
                text: form.prefix.length > 0 ? form.prefix + "-" : ""
                font: Theme.code
                color: Theme.text2
            }
            TextField {
                id: numberField
                width: 96
                placeholderText: "번호"
                text: form.number
                invalid: form.numberProblem.length > 0
                inputMethodHints: Qt.ImhDigitsOnly
                onTextEdited: form.number = text
                onSubmitted: titleField.forceActiveFocus()
            }
            Label {
                height: numberField.height
                text: form.numberProblem.length > 0 ? form.numberProblem
                    : form.numberHint.length > 0 ? form.numberHint : form.numberOrigin
                font: Theme.secondary
                color: form.numberProblem.length > 0 ? Theme.danger
                    : form.numberHint.length > 0 ? Theme.warning : Theme.text3
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
        }
        FieldLabel { text: "제목" }
        TextField {
            id: titleField
            width: parent.width
            focus: true
            placeholderText: "무엇을 할지 한 줄로"
            text: form.title
            onTextEdited: form.title = text
            onSubmitted: sheet.submit()
        }
        Label {
            width: parent.width
            text: form.fileProblem.length > 0 ? form.fileName + " — " + form.fileProblem : form.fileName
            elide: Text.ElideMiddle
            font: Theme.codeSmall
            color: form.fileProblem.length > 0 ? Theme.danger : Theme.text3
            Accessible.role: Accessible.StaticText
            Accessible.name: "파일 " + text
        }
        Flow {
            width: parent.width
            topPadding: 4
            spacing: 12

            Repeater {
                model: form.fieldNames

                delegate: NewIssueField {
                    required property string modelData

                    width: Math.floor((sheet.availableWidth - 24) / 3)
                    name: modelData
                    form: form
                }
            }
        }
        NewIssueRefs {
            width: parent.width
            title: "선행"
            waitsFor: true
            rows: form.blockedBy
            form: form
        }
        NewIssueRefs {
            width: parent.width
            title: "후행"
            waitsFor: false
            rows: form.blocks
            form: form
        }
        Label {
            topPadding: 6
            text: form.templateOrigin
            font: Theme.meta
            color: Theme.text3
        }
        FieldReason { text: form.error }
    }
    footer: DialogButtons {
        VButton {
            text: "취소"
            onClicked: sheet.close()
        }
        VButton {
            kind: VButton.Primary
            text: "만들기"
            keys: "Ctrl Enter"
            enabled: form.canCreate
            onClicked: sheet.submit()
        }
    }
}
