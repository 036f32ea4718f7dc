import QtQuick
import Vesk.Controls
import Vesk.Shell

// Closing a session that works is asked about once.
Dialog {
    id: sheet

    required property Workspace workspace
    required property string key
    required property string sessionTitle
    required property string what

    title: "일하는 중인 세션을 닫을까요?"

    contentItem: Column {
        spacing: 8

        SheetText {
            text: sheet.sessionTitle
            font: Theme.uiBold
            color: Theme.text
            maximumLineCount: 3
        }
        SheetText { text: sheet.what }
        SheetText { text: "닫으면 이 일은 그 자리에서 끝납니다." }
    }
    footer: DialogButtons {
        VButton {
            focus: true
            text: "취소"
            onClicked: sheet.close()
        }
        VButton {
            kind: VButton.DestructivePrimary
            text: "세션 닫기"
            onClicked: {
                sheet.close()
                sheet.workspace.close(sheet.key)
            }
        }
    }
}
