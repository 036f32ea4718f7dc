import QtQuick
import Vesk.Controls
import Vesk.Chat

// A link that is not what it seems, or that is not opened: where it really leads, and why it was stopped.
Dialog {
    id: sheet

    required property ChatLinks links

    title: links.canOpen ? "이 링크를 열까요?" : "링크를 열지 않았습니다"

    contentItem: Column {
        spacing: 12

        Label {
            width: parent.width
            text: sheet.links.reason
            color: Theme.text2
            lineHeight: Theme.uiLine
            lineHeightMode: Text.FixedHeight
            wrapMode: Text.Wrap
            elide: Text.ElideNone
        }
        Rectangle {
            width: parent.width
            height: address.height + 16
            radius: Theme.radius
            color: Theme.well
            border.color: Theme.line

            Label {
                id: address
                x: 12
                y: 8
                width: parent.width - 24
                text: sheet.links.address
                font: Theme.code
                wrapMode: Text.WrapAnywhere
                elide: Text.ElideNone
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
        }
    }
    footer: DialogButtons {
        VButton {
            kind: VButton.Quiet
            text: "주소 복사"
            onClicked: {
                sheet.links.copyAddress()
                sheet.close()
            }
        }
        VButton {
            focus: true
            text: sheet.links.canOpen ? "취소" : "닫기"
            onClicked: sheet.close()
        }
        VButton {
            visible: sheet.links.canOpen
            kind: VButton.Primary
            text: "열기"
            onClicked: {
                sheet.close()
                sheet.links.openAnyway()
            }
        }
    }
}
