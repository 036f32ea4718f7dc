import QtQuick
import QtQuick.Templates as T
import Vesk.Controls
import Vesk.Chat
import Vesk.Issues

// The text of an issue: its source, what it looks like, or both side by side.
FocusScope {
    id: body

    required property IssueDetail detail
    required property int mode

    readonly property bool edits: mode !== IssueDetailPane.Preview
    readonly property bool editing: editor.activeFocus
    readonly property bool shows: mode !== IssueDetailPane.Edit

    function focusEditor(): void { editor.focusText() }

    Label {
        id: locked
        x: 20
        width: parent.width - 40
        height: visible ? implicitHeight + 8 : 0
        visible: body.edits && text.length > 0
        text: body.detail.document?.lockedNotice ?? ""
        font: Theme.secondary
        color: Theme.danger
        lineHeight: Theme.secondaryLine
        lineHeightMode: Text.FixedHeight
        wrapMode: Text.Wrap
        elide: Text.ElideNone
        verticalAlignment: Text.AlignTop
        Accessible.role: Accessible.AlertMessage
        Accessible.name: text
    }
    IssueEditor {
        id: editor
        anchors.top: locked.bottom
        anchors.bottom: parent.bottom
        width: body.shows ? Math.round(parent.width / 2) : parent.width
        visible: body.edits && tooLong.text.length === 0
        focus: body.edits
        // Not by the label, which hears of a new document later.
        document: body.detail.tooLongText.length > 0 ? null : body.detail.document
    }
    Label {
        id: tooLong
        anchors.centerIn: editor
        width: Math.min(420, editor.width - 40)
        visible: body.edits && text.length > 0
        text: body.detail.tooLongText
        color: Theme.text2
        lineHeight: Theme.uiLine
        lineHeightMode: Text.FixedHeight
        wrapMode: Text.Wrap
        elide: Text.ElideNone
        horizontalAlignment: Text.AlignHCenter
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
    Hairline {
        // Not by the editor's edge: a hidden line that comes to lie below the one at the pane's own edge would
        // leave its pixels behind, as the software renderer forgets what is covered as a whole.
        x: Math.round(parent.width / 2)
        anchors.top: locked.bottom
        anchors.bottom: parent.bottom
        visible: body.edits && body.shows
    }
    Flickable {
        id: preview
        anchors.top: locked.bottom
        anchors.bottom: parent.bottom
        anchors.right: parent.right
        width: body.edits ? parent.width - editor.width - 1 : parent.width
        visible: body.shows
        focus: !body.edits
        activeFocusOnTab: true
        contentHeight: words.height + 32
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        T.ScrollBar.vertical: ScrollBar {}
        Accessible.role: Accessible.Document
        Accessible.name: body.detail.title

        Keys.onUpPressed: contentY = Math.max(0, contentY - Theme.readingLine * 2)
        Keys.onDownPressed: contentY = Math.max(0, Math.min(contentHeight - height, contentY + Theme.readingLine * 2))
        Keys.onPressed: event => {
            const step = event.key === Qt.Key_PageDown || event.key === Qt.Key_Space ? 1 : event.key === Qt.Key_PageUp ? -1 : 0
            event.accepted = step !== 0
            if (event.accepted)
                contentY = Math.max(0, Math.min(Math.max(0, contentHeight - height), contentY + step * (height - 40)))
        }

        FocusRing {
            parent: preview
            visible: preview.activeFocus
            gap: -2
        }
        Label {
            x: 20
            y: 12
            visible: text.length > 0
            text: body.detail.emptyText
            color: Theme.text3
        }
        MarkdownBlocks {
            id: words
            x: 20
            y: 8
            width: Math.min(760, preview.width - 40)
            blocks: body.detail.preview
            tickable: true
            onTicked: block => body.detail.toggleTask(block)
            onLinkChosen: (link, html) => body.detail.followLink(link, html)
        }
    }
    Connections {
        target: body.detail
        function onDocumentChanged(): void { preview.contentY = 0 }
    }
}
