import QtQuick
import Vesk.Controls

// What could not be done, until somebody puts it away.
Rectangle {
    id: failure

    required property string modelData

    signal closed(string text)

    height: words.height + 24
    radius: Theme.radius
    color: Theme.dangerSoft
    border.color: Theme.danger
    Accessible.role: Accessible.AlertMessage
    Accessible.name: modelData

    Icon {
        x: 12
        y: 14
        name: "warning"
        color: Theme.danger
    }
    Label {
        id: words
        x: 36
        y: 12
        width: parent.width - x - 36
        text: failure.modelData
        lineHeight: Theme.uiLine
        lineHeightMode: Text.FixedHeight
        wrapMode: Text.Wrap
        elide: Text.ElideNone
        Accessible.ignored: true
    }
    IconButton {
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.margins: 6
        side: 24
        iconSize: 12
        iconName: "close"
        text: "닫기"
        onClicked: failure.closed(failure.modelData)
    }
}
