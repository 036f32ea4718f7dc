import QtQuick
import Vesk.Controls
import Vesk.Shell

// Another title for a session.
Dialog {
    id: sheet

    required property Workspace workspace
    required property string key
    required property string oldTitle

    function submit(): void {
        if (field.text.trim().length === 0)
            return
        workspace.rename(key, field.text)
        close()
    }

    title: "제목 바꾸기"
    Component.onCompleted: field.selectAll()

    contentItem: TextField {
        id: field
        focus: true
        text: sheet.oldTitle
        placeholderText: "세션 제목"
        onSubmitted: sheet.submit()
    }
    footer: DialogButtons {
        VButton {
            text: "취소"
            onClicked: sheet.close()
        }
        VButton {
            kind: VButton.Primary
            text: "바꾸기"
            enabled: field.text.trim().length > 0
            onClicked: sheet.submit()
        }
    }
}
