pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Vesk.Controls
import Vesk.Issues

// A new issue: number, title, the fields of the folder's skeleton, relations.
Dialog {
    id: sheet

    required property IssuesView view

    function submit(): void {
        if (entry.canCreate && entry.create())
            close()
    }

    readonly property real room: (T.Overlay.overlay ? T.Overlay.overlay.height : 600) - 2 * margins - topPadding
        - bottomPadding - header.implicitHeight - footer.implicitHeight

    title: "새 이슈"
    implicitWidth: 560
    Component.onCompleted: titleField.focus = true

    // A window too low for all of it scrolls within.
    contentItem: Flickable {
        implicitHeight: Math.min(column.height, sheet.room)
        contentHeight: column.height
        boundsBehavior: Flickable.StopAtBounds
        clip: contentHeight > height
        T.ScrollBar.vertical: ScrollBar {}

        Column {
            id: column
            width: parent.width - (height > sheet.room ? 12 : 0)
            spacing: 4

            Shortcut {
                sequences: ["Ctrl+Return", "Ctrl+Enter"]
                onActivated: sheet.submit()
            }

            NewIssueForm {
                id: entry
                view: sheet.view
            }
            FieldLabel { text: "번호" }
            Row {
                width: parent.width
                spacing: 8

                Label {
                    height: numberField.height
                    text: entry.prefix.length > 0 ? entry.prefix + "-" : ""
                    font: Theme.code
                    color: Theme.text2
                }
                TextField {
                    id: numberField
                    width: 96
                    placeholderText: "번호"
                    text: entry.number
                    invalid: entry.numberProblem.length > 0
                    inputMethodHints: Qt.ImhDigitsOnly
                    onTextEdited: entry.number = text
                    onSubmitted: titleField.forceActiveFocus()
                }
                Label {
                    height: numberField.height
                    text: entry.numberProblem.length > 0 ? entry.numberProblem
                        : entry.numberHint.length > 0 ? entry.numberHint : entry.numberOrigin
                    font: Theme.secondary
                    color: entry.numberProblem.length > 0 ? Theme.danger
                        : entry.numberHint.length > 0 ? Theme.warning : Theme.text3
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
                text: entry.title
                onTextEdited: entry.title = text
                onSubmitted: sheet.submit()
            }
            Label {
                width: parent.width
                text: entry.fileProblem.length > 0 ? entry.fileName + " — " + entry.fileProblem : entry.fileName
                elide: Text.ElideMiddle
                font: Theme.codeSmall
                color: entry.fileProblem.length > 0 ? Theme.danger : Theme.text3
                Accessible.role: Accessible.StaticText
                Accessible.name: "파일 " + text
            }
            Flow {
                width: parent.width
                topPadding: 4
                spacing: 12

                Repeater {
                    model: entry.fieldNames

                    delegate: NewIssueField {
                        required property string modelData

                        width: Math.floor((column.width - 24) / 3)
                        name: modelData
                        form: entry
                    }
                }
            }
            NewIssueRefs {
                width: parent.width
                title: "선행"
                waitsFor: true
                rows: entry.blockedBy
                form: entry
            }
            NewIssueRefs {
                width: parent.width
                title: "후행"
                waitsFor: false
                rows: entry.blocks
                form: entry
            }
            Label {
                topPadding: 6
                text: entry.templateOrigin
                font: Theme.meta
                color: Theme.text3
            }
            FieldReason { text: entry.error }
        }
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
            enabled: entry.canCreate
            onClicked: sheet.submit()
        }
    }
}
