import QtQuick
import Vesk.Controls
import Vesk.Issues

// What stands in a window without a folder: how to get one, or where the chosen one should be.
FocusScope {
    id: pane

    required property IssuesView view

    readonly property bool missing: view.folderState === IssuesView.Missing

    focus: true

    function pick(): void {
        picker.source = ""
        picker.setSource("IssueFolderPicker.qml", { form: form })
    }

    IssueOnboarding {
        id: form
        view: pane.view
    }
    Loader { id: picker }

    Column {
        anchors.centerIn: parent
        width: Math.min(480, parent.width - 48)
        visible: pane.missing
        spacing: 12

        Label {
            width: parent.width
            text: "이슈 폴더가 없습니다"
            font: Theme.pageTitle
            horizontalAlignment: Text.AlignHCenter
        }
        SheetText {
            text: "고른 폴더가 지금 그 자리에 없습니다. 디스크가 빠져 있거나 옮겨졌을 수 있습니다. 고른 것은 그대로 기억합니다."
            horizontalAlignment: Text.AlignHCenter
        }
        Label {
            width: parent.width
            text: pane.view.folderPath
            font: Theme.code
            color: Theme.danger
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.WrapAnywhere
            elide: Text.ElideNone
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        SheetText {
            visible: pane.view.holdsEdits
            text: "저장하지 못한 편집이 이 창에 남아 있습니다. 폴더가 돌아오면 이어서 저장할 수 있습니다."
            color: Theme.warning
            horizontalAlignment: Text.AlignHCenter
        }
        Row {
            anchors.horizontalCenter: parent.horizontalCenter
            spacing: 8

            VButton {
                focus: pane.missing
                kind: VButton.Primary
                iconName: "refresh"
                text: "다시 시도"
                keys: "F5"
                onClicked: pane.view.reload()
            }
            VButton {
                iconName: "folder"
                text: "다른 폴더 고르기"
                onClicked: pane.pick()
            }
            VButton {
                kind: VButton.Quiet
                text: "고른 것 지우기"
                onClicked: pane.view.chooseFolder("")
            }
        }
    }
    Column {
        anchors.centerIn: parent
        width: Math.min(480, parent.width - 48)
        visible: !pane.missing
        spacing: 12

        Label {
            width: parent.width
            text: "이슈 폴더를 정하세요"
            font: Theme.pageTitle
            horizontalAlignment: Text.AlignHCenter
        }
        SheetText {
            text: "이슈는 폴더 하나에 담긴 Markdown 파일들입니다. 사람과 세션이 같은 파일을 고치고, 이 창은 그것을 목록과 의존관계, 칸반으로 보여 줍니다."
            horizontalAlignment: Text.AlignHCenter
        }
        VButton {
            anchors.horizontalCenter: parent.horizontalCenter
            focus: !pane.missing
            kind: VButton.Primary
            iconName: "folder"
            text: "폴더 고르기"
            onClicked: pane.pick()
        }
        Item {
            width: parent.width
            height: 17

            Hairline {
                y: 8
                width: parent.width
            }
        }
        Label {
            text: "새로 만들기"
            font: Theme.section
        }
        Row {
            width: parent.width
            spacing: 8

            Column {
                width: 120

                FieldLabel { text: "접두사" }
                TextField {
                    width: parent.width
                    placeholderText: "접두사"
                    text: form.key
                    invalid: form.key.length === 0
                    onTextEdited: form.key = text
                    onSubmitted: if (form.canCreate) form.create()
                }
            }
            Column {
                width: parent.width - 120 - make.width - 16

                FieldLabel { text: "폴더 이름" }
                TextField {
                    width: parent.width
                    placeholderText: "프로젝트 안의 폴더"
                    text: form.folderName
                    onTextEdited: form.folderName = text
                    onSubmitted: if (form.canCreate) form.create()
                }
            }
            VButton {
                id: make
                anchors.bottom: parent.bottom
                text: "새로 만들기"
                iconName: "folder-plus"
                enabled: form.canCreate
                onClicked: form.create()
            }
        }
        FieldReason { text: form.problem }
        Label {
            width: parent.width
            visible: text.length > 0
            text: form.hint
            font: Theme.secondary
            color: Theme.text3
        }
    }
}
