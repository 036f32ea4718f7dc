import QtQuick
import Vesk.Controls

// What stands in a list that has nothing: one sentence what belongs here, and one button or two.
Column {
    id: empty

    required property string text
    property string title
    property string actionText
    property string actionKeys
    property string otherText
    property string otherKeys

    signal actionTriggered()
    signal otherTriggered()

    width: Math.min(360, parent ? parent.width - 32 : 360)
    spacing: 12

    Label {
        width: parent.width
        visible: text.length > 0
        text: empty.title
        font: Theme.pageTitle
        horizontalAlignment: Text.AlignHCenter
    }
    Label {
        width: parent.width
        text: empty.text
        color: Theme.text2
        lineHeight: Theme.uiLine
        lineHeightMode: Text.FixedHeight
        wrapMode: Text.WordWrap
        elide: Text.ElideNone
        horizontalAlignment: Text.AlignHCenter
    }
    Row {
        anchors.horizontalCenter: parent.horizontalCenter
        visible: empty.actionText.length > 0
        spacing: 8

        VButton {
            text: empty.actionText
            keys: empty.actionKeys
            onClicked: empty.actionTriggered()
        }
        VButton {
            visible: empty.otherText.length > 0
            text: empty.otherText
            keys: empty.otherKeys
            onClicked: empty.otherTriggered()
        }
    }
}
