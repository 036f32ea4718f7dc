import QtQuick
import Vesk.Controls
import Vesk.Shell

// Taking a project out of the list; its files stay.
Dialog {
    id: sheet

    required property Projects projects
    required property string alias

    readonly property var live: projects.liveSessions(alias)
    readonly property int sessions: projects.sessionCount(alias)

    title: "프로젝트를 목록에서 뺄까요?"

    contentItem: Column {
        spacing: 8

        SheetText {
            text: sheet.alias
            font: Theme.uiBold
            color: Theme.text
        }
        SheetText { text: "폴더와 파일은 그대로 남습니다: " + sheet.projects.folder(sheet.alias) }
        SheetText {
            visible: sheet.sessions > 0
            text: "열린 세션 " + sheet.sessions + "개가 닫힙니다."
        }
        SheetText {
            visible: sheet.live.length > 0
            color: Theme.danger
            text: "실행 중이라 멈추는 세션: " + sheet.live.join(", ")
        }
    }
    footer: DialogButtons {
        VButton {
            focus: true
            text: "취소"
            onClicked: sheet.close()
        }
        VButton {
            kind: VButton.DestructivePrimary
            text: "목록에서 빼기"
            onClicked: {
                sheet.close()
                sheet.projects.remove(sheet.alias)
            }
        }
    }
}
