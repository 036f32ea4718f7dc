pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Version

// What a session is asked, before it goes: the words can be changed, and who gets them is chosen.
Dialog {
    id: sheet

    required property VersionRequests requests
    required property string draft
    property string target: ""

    readonly property string reason: targetReason(requests.targets)
    readonly property bool canSend: words.text.trim().length > 0 && reason.length === 0

    // Again with every change of the sessions.
    function targetReason(targets: var): string { return requests.reasonOf(target) }
    function submit(): void {
        if (canSend && !words.inputMethodComposing && requests.send(words.text, target))
            close()
    }

    title: "세션에 부탁하기"
    implicitWidth: 560
    Component.onCompleted: {
        target = requests.firstFree
        words.cursorPosition = words.length
    }

    contentItem: Column {
        spacing: 8

        Rectangle {
            width: parent.width
            height: Math.max(Theme.px(112), Math.min(Theme.px(260), words.contentHeight + 20))
            radius: Theme.radius
            color: Theme.raised
            border.width: words.activeFocus ? 2 : 1
            border.color: words.activeFocus ? Theme.accent : Theme.lineCtl

            Flickable {
                id: area
                anchors.fill: parent
                anchors.margins: 8
                contentHeight: words.height
                clip: true
                boundsBehavior: Flickable.StopAtBounds

                TextEdit {
                    id: words
                    width: area.width
                    height: Math.max(area.height, contentHeight)
                    focus: true
                    activeFocusOnTab: true
                    selectByMouse: true
                    textFormat: TextEdit.PlainText
                    wrapMode: TextEdit.Wrap
                    text: sheet.draft
                    font: Theme.reading
                    color: Theme.text
                    selectionColor: Theme.selected
                    selectedTextColor: Theme.text
                    Accessible.name: "보낼 말"

                    Keys.onPressed: event => {
                        const enter = event.key === Qt.Key_Return || event.key === Qt.Key_Enter
                        event.accepted = !inputMethodComposing
                            && (event.key === Qt.Key_Tab || event.key === Qt.Key_Backtab
                                || enter && (event.modifiers & Qt.ControlModifier) !== 0)
                        if (event.accepted && enter)
                            sheet.submit()
                        else if (event.accepted)
                            nextItemInFocusChain(event.key === Qt.Key_Tab).forceActiveFocus(Qt.TabFocusReason)
                    }
                    onCursorRectangleChanged: {
                        const caret = cursorRectangle
                        if (caret.y < area.contentY)
                            area.contentY = caret.y
                        else if (caret.y + caret.height > area.contentY + area.height)
                            area.contentY = caret.y + caret.height - area.height
                    }
                }
            }
        }
        Label {
            topPadding: 4
            text: "받을 세션"
            font: Theme.secondaryBold
            color: Theme.text2
        }
        ListView {
            id: targets
            width: parent.width
            height: Math.min(contentHeight, Theme.px(28) * 5)
            clip: true
            boundsBehavior: Flickable.StopAtBounds
            model: sheet.requests.targets
            Accessible.role: Accessible.List
            Accessible.name: "받을 세션"

            delegate: TargetRow {
                chosen: target.key === sheet.target
                onPicked: sheet.target = target.key
            }
        }
        Label {
            width: parent.width
            height: Theme.px(20)
            text: sheet.reason
            font: Theme.secondary
            color: Theme.warning
        }
    }
    footer: DialogButtons {
        VButton {
            text: "취소"
            onClicked: sheet.close()
        }
        VButton {
            kind: VButton.Primary
            text: "보내기"
            keys: "Ctrl Enter"
            enabled: sheet.canSend
            onClicked: sheet.submit()
        }
    }
}
