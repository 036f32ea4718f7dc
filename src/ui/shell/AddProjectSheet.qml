pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Shell

// A folder becomes a project: where it lies, what it is called, its colour.
Dialog {
    id: sheet

    required property AddProject form
    required property Projects projects

    function submit(): void {
        if (form.submit()) {
            const alias = form.alias
            close()
            added(alias)
        }
    }

    signal added(string alias)

    title: "프로젝트 폴더 추가"
    implicitWidth: 520
    Component.onCompleted: (form.folder.length > 0 ? aliasField : folderField).focus = true

    contentItem: Column {
        spacing: 6

        FieldLabel { text: "폴더" }
        Row {
            width: parent.width
            spacing: 8

            TextField {
                id: folderField
                width: parent.width - pick.width - parent.spacing
                placeholderText: "폴더의 경로"
                text: sheet.form.folder
                invalid: sheet.form.folderReason.length > 0
                onTextEdited: sheet.form.folder = text
                onSubmitted: sheet.submit()
            }
            VButton {
                id: pick
                iconName: "folder"
                text: "고르기…"
                onClicked: {
                    picker.source = ""
                    picker.setSource("FolderPicker.qml", { form: sheet.form, next: aliasField })
                }
            }
        }
        FieldReason { text: sheet.form.folderReason }

        FieldLabel { text: "별칭" }
        TextField {
            id: aliasField
            width: parent.width
            placeholderText: "프로젝트의 별칭"
            text: sheet.form.alias
            invalid: sheet.form.aliasReason.length > 0
            onTextEdited: sheet.form.alias = text
            onSubmitted: sheet.submit()
        }
        FieldReason { text: sheet.form.aliasReason }

        FieldLabel { text: "색" }
        LaneChoice {
            leftPadding: 0
            lane: sheet.form.lane
            onChosen: lane => sheet.form.lane = lane
        }

        FieldReason {
            tone: "warning"
            text: sheet.projects.loadError.length === 0 ? ""
                : "지금 목록 파일을 읽지 못한 상태입니다. 추가하면 그 파일을 새로 쓰며, 그 전에 사본을 옆에 남깁니다: "
                  + sheet.projects.catalogPath + ".bak"
        }
        FieldReason { text: sheet.form.saveReason }

        Loader { id: picker }
    }

    footer: DialogButtons {
        VButton {
            text: "취소"
            onClicked: sheet.close()
        }
        VButton {
            kind: VButton.Primary
            text: "추가"
            enabled: sheet.form.canAdd
            onClicked: sheet.submit()
        }
    }
}
