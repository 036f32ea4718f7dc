import QtQuick
import Vesk.Controls

// Which file is compared, and the way through its hunks.
Item {
    id: head

    required property string path
    required property string kind
    required property int hunk
    required property int hunks
    required property bool canGoBack
    required property bool canGoOn

    signal hunkTriggered(int step)

    implicitHeight: Theme.px(32)

    Rectangle {
        anchors.fill: parent
        color: Theme.panel
    }
    Label {
        id: name
        x: 14
        width: Math.min(implicitWidth, head.width - steps.width - words.width - 48)
        height: parent.height
        text: head.path
        font: Theme.codeSmall
        elide: Text.ElideMiddle
    }
    Label {
        id: words
        anchors.left: name.right
        anchors.leftMargin: 8
        height: parent.height
        text: head.kind
        font: Theme.secondary
        color: Theme.text3
    }
    Row {
        id: steps
        anchors.right: parent.right
        anchors.rightMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        spacing: 4
        visible: head.hunks > 0

        Label {
            anchors.verticalCenter: parent.verticalCenter
            rightPadding: 4
            text: "덩이 " + Math.max(1, head.hunk) + "/" + head.hunks
            font: Theme.secondary
            color: Theme.text2
        }
        IconButton {
            side: 24
            iconSize: 14
            iconName: "chevron-up"
            text: "앞 덩이"
            keys: "["
            enabled: head.canGoBack
            onClicked: head.hunkTriggered(-1)
        }
        IconButton {
            side: 24
            iconSize: 14
            iconName: "chevron-down"
            text: "다음 덩이"
            keys: "]"
            enabled: head.canGoOn
            onClicked: head.hunkTriggered(1)
        }
    }
    Hairline {
        anchors.bottom: parent.bottom
        width: parent.width
    }
}
