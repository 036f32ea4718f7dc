import QtQuick
import QtQuick.Templates as T
import Vesk.Controls
import Vesk.Issues

// The source of an issue.
FocusScope {
    id: box

    required property MarkdownDocumentModel document

    function focusText(): void { edit.forceActiveFocus() }

    IssueEditorLink {
        // What stays where it is on the screen: the caret, or while that is out of sight the topmost line.
        property int caret: 0
        property int anchor: 0
        property real below: 0

        editor: edit.textDocument
        document: box.document
        onAboutToChange: {
            const seen = edit.cursorRectangle.y >= flick.contentY
                && edit.cursorRectangle.y < flick.contentY + flick.height
            caret = edit.cursorPosition
            anchor = seen ? caret : edit.positionAt(0, flick.contentY)
            below = edit.positionToRectangle(anchor).y - flick.contentY
        }
        onChanged: {
            edit.cursorPosition = placeOf(caret)
            const y = edit.positionToRectangle(placeOf(anchor)).y - below
            flick.contentY = Math.max(0, Math.min(y, flick.contentHeight - flick.height))
        }
        onReplaced: {
            edit.cursorPosition = 0
            flick.contentY = 0
        }
    }
    Flickable {
        id: flick

        property real heightBefore: 0

        function reveal(line: rect): void {
            if (line.y < contentY)
                contentY = line.y
            else if (line.y + line.height > contentY + height)
                contentY = line.y + line.height - height
        }

        // What comes above the text does not push the line out of sight on which one writes.
        onHeightChanged: {
            const line = edit.cursorRectangle
            if (edit.activeFocus && line.y >= contentY && line.y + line.height <= contentY + heightBefore)
                reveal(line)
            heightBefore = height
        }
        anchors.fill: parent
        anchors.leftMargin: 20
        contentHeight: edit.height
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        T.ScrollBar.vertical: ScrollBar {}

        TextEdit {
            id: edit
            objectName: "issueEditor"
            width: flick.width - 20
            height: Math.max(implicitHeight + 24, flick.height)
            textFormat: TextEdit.PlainText
            wrapMode: TextEdit.Wrap
            topPadding: 4
            selectByMouse: true
            focus: true
            activeFocusOnTab: true
            readOnly: box.document?.locked ?? true
            font: Theme.codeEditor
            color: Theme.text
            selectionColor: Theme.selected
            selectedTextColor: Theme.text
            Accessible.role: Accessible.EditableText
            Accessible.name: "이슈 본문"
            Accessible.multiLine: true
            Accessible.readOnly: readOnly

            Keys.onPressed: event => {
                // The way out by keyboard: Tab itself belongs to the text.
                event.accepted = event.key === Qt.Key_Backtab
                if (event.accepted)
                    nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason)
            }
            onCursorRectangleChanged: flick.reveal(cursorRectangle)
        }
    }
    HoverHandler { cursorShape: Qt.IBeamCursor }
}
