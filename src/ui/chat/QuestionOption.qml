pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Vesk.Controls

// One option: mark, label, description and the digit that chooses it.
T.AbstractButton {
    id: option

    required property int index
    required property string label
    required property string description
    required property string digit
    required property bool chosen
    required property bool multi

    implicitHeight: words.height + 12
    focusPolicy: Qt.StrongFocus
    Accessible.role: multi ? Accessible.CheckBox : Accessible.RadioButton
    Accessible.name: label
    Accessible.description: description
    Accessible.checkable: true
    Accessible.checked: chosen

    Keys.onUpPressed: nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason)
    Keys.onDownPressed: nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason)

    background: Rectangle {
        radius: Theme.radiusSmall
        color: option.chosen ? Theme.accentSoft : option.hovered ? Theme.hover : "transparent"

        FocusRing {
            visible: option.visualFocus
            gap: -3
            parentRadius: Theme.radiusSmall
        }
    }
    contentItem: Item {
        RadioMark {
            x: 10
            y: 6 + Math.round((Theme.uiLine - height) / 2)
            visible: !option.multi
            checked: option.chosen
        }
        CheckMark {
            x: 10
            y: 6 + Math.round((Theme.uiLine - height) / 2)
            visible: option.multi
            checked: option.chosen
        }
        Column {
            id: words
            x: 10 + Theme.px(16) + 10
            y: 6
            width: parent.width - x - 36

            Text {
                width: parent.width
                text: option.label
                textFormat: Text.PlainText
                font: Theme.ui
                color: Theme.text
                lineHeight: Theme.uiLine
                lineHeightMode: Text.FixedHeight
                wrapMode: Text.Wrap
                Accessible.ignored: true
            }
            Text {
                width: parent.width
                visible: text.length > 0
                text: option.description
                textFormat: Text.PlainText
                font: Theme.secondary
                color: Theme.text2
                lineHeight: Theme.secondaryLine
                lineHeightMode: Text.FixedHeight
                wrapMode: Text.Wrap
                Accessible.ignored: true
            }
        }
        Label {
            anchors.right: parent.right
            anchors.rightMargin: 10
            y: 6
            height: Theme.uiLine
            text: option.digit
            font: Theme.meta
            color: Theme.text3
            Accessible.ignored: true
        }
    }
}
