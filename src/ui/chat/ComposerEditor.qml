import QtQuick
import QtQuick.Templates as T
import Vesk.Controls
import Vesk.Chat

// The text of the next message: two to ten lines if there is room, then it scrolls.
Rectangle {
    id: box

    required property ComposerModel model
    required property Item nextItem
    property real room: Infinity
    readonly property real least: Math.ceil(2 * metrics.lineSpacing) + 18
    property bool lit: false
    readonly property real line: Math.max(metrics.lineSpacing, edit.contentHeight / Math.max(1, edit.lineCount))

    signal sendRequested()
    signal interruptRequested()

    implicitHeight: Math.max(least, Math.min(Math.ceil(Math.max(2, Math.min(edit.lineCount, 10)) * line) + 18, room))
    radius: Theme.radius
    color: lit ? Theme.accentSoft : Theme.canvas
    border.width: edit.activeFocus || lit ? 2 : 1
    border.color: edit.activeFocus || lit ? Theme.accent : Theme.lineCtl

    function showDraft(): void {
        const caret = model.caret
        if (edit.text !== model.draft) {
            edit.text = model.draft
            edit.cursorPosition = caret
        }
    }
    function focusText(): void {
        edit.forceActiveFocus()
    }

    FontMetrics {
        id: metrics
        font: edit.font
    }
    ComposerKeys {
        editor: edit
        composer: box.model
        onSendRequested: box.sendRequested()
        onInterruptRequested: box.interruptRequested()
    }
    Connections {
        target: box.model
        function onDraftChanged(): void {
            box.showDraft()
        }
    }
    Connections {
        target: box.model.completion
        function onReplaceRequested(start: int, end: int, text: string): void {
            edit.remove(start, end)
            edit.insert(start, text)
            edit.cursorPosition = start + text.length
        }
    }
    Flickable {
        id: flick
        anchors.fill: parent
        anchors.margins: 9
        anchors.leftMargin: 12
        anchors.rightMargin: 6
        contentHeight: edit.implicitHeight
        boundsBehavior: Flickable.StopAtBounds
        interactive: contentHeight > height
        clip: true
        T.ScrollBar.vertical: ScrollBar {}
        onHeightChanged: showCaret()

        function showCaret(): void {
            const caret = edit.cursorRectangle
            contentY = Math.max(0, Math.min(caret.y, Math.max(contentY, caret.y + caret.height - height)))
        }

        TextEdit {
            id: edit
            objectName: "composerText"
            width: flick.width - 8
            textFormat: TextEdit.PlainText
            wrapMode: TextEdit.Wrap
            selectByMouse: true
            focus: true
            activeFocusOnTab: true
            font: Theme.reading
            color: Theme.text
            selectionColor: Theme.selected
            selectedTextColor: Theme.text
            KeyNavigation.priority: KeyNavigation.BeforeItem
            KeyNavigation.tab: box.nextItem
            Accessible.role: Accessible.EditableText
            Accessible.name: "메시지"
            Accessible.description: placeholder.text
            Accessible.multiLine: true

            // While a change is on its way all else is told first, and the text is still the old one.
            function settled(): bool {
                return text.length === length
            }
            // What is put in from outside is no typing.
            onTextChanged: {
                if (text === box.model.draft)
                    return
                box.model.draft = text
                box.model.caret = cursorPosition
                box.model.completion.noteTyped(text, cursorPosition, preeditText)
            }
            onPreeditTextChanged: {
                if (!settled())
                    return
                if (preeditText.length > 0)
                    box.model.completion.noteTyped(text, cursorPosition, preeditText)
                else
                    box.model.completion.noteCaret(text, cursorPosition, preeditText)
            }
            onCursorPositionChanged: {
                if (!settled())
                    return
                if (text === box.model.draft)
                    box.model.caret = cursorPosition
                box.model.completion.noteCaret(text, cursorPosition, preeditText)
            }
            onActiveFocusChanged: {
                if (!activeFocus)
                    box.model.completion.close()
            }
            Component.onCompleted: box.showDraft()
            onCursorRectangleChanged: flick.showCaret()
        }
        Label {
            id: placeholder
            width: edit.width
            visible: edit.length === 0 && edit.preeditText.length === 0
            text: "Message the agent, tag @files, or use /commands and /skills"
            font: Theme.reading
            color: Theme.text3
            Accessible.ignored: true
        }
    }
    HoverHandler {
        cursorShape: Qt.IBeamCursor
    }
    TapHandler {
        onTapped: eventPoint => {
            if (eventPoint.position.y > flick.y + edit.height) {
                edit.cursorPosition = edit.length
                box.focusText()
            }
        }
    }
}
