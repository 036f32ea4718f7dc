import QtQuick
import Vesk.Controls

// Leads back to the newest message; a dot says that something new came there.
VButton {
    id: button

    required property bool hasNews

    iconName: "chevron-down"
    tip: "맨 아래로 스크롤 (최신 메시지로 이동)"
    focusPolicy: Qt.TabFocus
    Accessible.name: text

    Rectangle {
        x: button.width - width / 2 - 2
        y: -height / 2 + 2
        width: 8
        height: 8
        radius: 4
        visible: button.hasNews
        color: Theme.accent
        border.color: Theme.canvas
    }
}
