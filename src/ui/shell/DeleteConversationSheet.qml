import QtQuick
import Vesk.Controls
import Vesk.Shell

// Throwing a past conversation away; it can be taken back out of the Trash.
Dialog {
    id: sheet

    required property ResumeView view
    required property string key
    required property string conversation

    title: "대화를 휴지통으로 옮길까요?"

    contentItem: Column {
        spacing: 8

        SheetText {
            text: sheet.conversation
            font: Theme.uiBold
            color: Theme.text
        }
        SheetText { text: "이 대화는 더 이어 갈 수 없게 됩니다. 휴지통에서 되돌리면 다시 목록에 나옵니다." }
    }
    footer: DialogButtons {
        VButton {
            focus: true
            text: "취소"
            onClicked: sheet.close()
        }
        VButton {
            kind: VButton.DestructivePrimary
            text: "휴지통으로"
            onClicked: {
                sheet.close()
                sheet.view.moveToTrash(sheet.key)
            }
        }
    }
}
