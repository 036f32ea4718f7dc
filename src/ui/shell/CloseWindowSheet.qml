pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Shell

// The window is closed while sessions work.
Dialog {
    id: sheet

    required property list<string> work
    required property Window host

    title: "세션 " + work.length + "개가 실행 중입니다"
    implicitWidth: 520

    contentItem: Column {
        spacing: 8

        Repeater {
            model: sheet.work.slice(0, 6)

            delegate: SheetText {
                required property string modelData

                text: modelData
                color: Theme.text
                wrapMode: Text.NoWrap
                elide: Text.ElideRight
            }
        }
        SheetText {
            visible: sheet.work.length > 6
            text: "외 " + (sheet.work.length - 6) + "개"
        }
        SheetText { text: "창만 닫으면 세션은 계속 일하고, Vesk를 다시 실행하면 이 창이 돌아옵니다." }
    }
    footer: DialogButtons {
        VButton {
            focus: true
            text: "취소"
            onClicked: sheet.close()
        }
        VButton {
            kind: VButton.Destructive
            text: "모두 끝내기"
            onClicked: Qt.quit()
        }
        VButton {
            kind: VButton.Primary
            text: "창만 닫기"
            onClicked: {
                sheet.close()
                sheet.host.hide()
            }
        }
    }
}
