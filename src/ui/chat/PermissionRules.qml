pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Chat

// The rules that "always" would write, in full, and the file that they go to.
Item {
    id: rules

    required property PermissionCard card
    // In a narrow pane the rules stand below the words that introduce them.
    readonly property bool stacked: lead.implicitWidth > lines.width / 2

    implicitHeight: lines.y + lines.height

    Text {
        id: lead
        x: lines.x
        text: "항상 허용 시 저장할 규칙"
        font: Theme.secondary
        color: Theme.text2
        lineHeight: Theme.codeSmallLine
        lineHeightMode: Text.FixedHeight
    }
    Icon {
        y: Math.round((Theme.codeSmallLine - height) / 2)
        name: "lock"
        size: 12
        color: Theme.text3
    }
    Column {
        id: lines
        x: Theme.px(12) + 8
        y: rules.stacked ? Theme.codeSmallLine : 0
        width: parent.width - x

        Repeater {
            model: rules.card.rules

            Text {
                required property string modelData

                width: lines.width
                leftPadding: rules.stacked ? 0 : lead.implicitWidth + 8
                text: modelData
                textFormat: Text.PlainText
                font: Theme.codeSmall
                color: Theme.text
                lineHeight: Theme.codeSmallLine
                lineHeightMode: Text.FixedHeight
                wrapMode: Text.WrapAnywhere
            }
        }
        Text {
            text: "→ " + rules.card.ruleFile
            textFormat: Text.PlainText
            font: Theme.codeSmall
            color: Theme.text3
            lineHeight: Theme.codeSmallLine
            lineHeightMode: Text.FixedHeight
        }
    }
}
