import QtQuick
import QtQuick.Layouts
import Vesk.Controls
import Vesk.Chat

// The surface of one session: its timeline, what waits for an answer, the bars and the composer.
FocusScope {
    id: pane

    required property ProjectChat chat
    // The pane that has the keyboard's attention; others never take it.
    property bool active: false

    readonly property int backgroundCount: view.status.backgroundCount

    signal openBackground()
    signal openAuditLog()

    Accessible.role: Accessible.Pane
    Accessible.name: chat ? chat.title : ""

    function focusComposer(): void {
        composer.focusEditor()
    }
    function allowOnce(): void {
        view.permission.allowOnce()
    }
    function allowAlways(): void {
        view.permission.allowAlways()
    }
    function deny(): void {
        view.permission.deny()
    }
    function softInterrupt(): void {
        view.status.softInterrupt()
    }
    function stop(): void {
        view.status.stop()
    }

    ChatViewModel {
        id: view
        chat: pane.chat
        onFocusComposer: {
            if (pane.active)
                composer.focusEditor()
        }
    }
    Loader {
        id: linkSheet
        onLoaded: (item as Dialog).open()

        Connections {
            target: view.links
            function onStopped(): void {
                linkSheet.setSource(Qt.resolvedUrl("LinkSheet.qml"), { links: view.links })
            }
        }
        Connections {
            target: linkSheet.item as Dialog
            function onClosed(): void { linkSheet.source = "" }
        }
    }
    // Its edge, below the composer, moves with the bars: else the software renderer leaves one standing that went.
    Rectangle {
        anchors.fill: parent
        anchors.bottomMargin: middle.height / 100
        color: Theme.canvas
    }
    AttachmentDrop {
        id: drop
        anchors.fill: parent
        attachments: view.composer.attachments
    }
    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        Timeline {
            id: timeline
            Layout.fillWidth: true
            Layout.fillHeight: true
            view: view
        }
        // However much stands here, the composer below stays in view.
        FitColumn {
            id: middle

            readonly property real barsHeight: (pending.visible ? pending.height : 0) + (notices.visible ? notices.height : 0)
                + (background.visible ? background.height : 0) + (running.visible ? running.height : 0)

            Layout.fillWidth: true
            room: pane.height - composer.implicitHeight

            PromptArea {
                width: parent.width
                view: view
                paneHeight: pane.height
                space: middle.room - middle.barsHeight
                onAnswered: {
                    if (pane.active)
                        composer.focusEditor()
                }
            }
            PendingBar {
                id: pending
                width: parent.width
                pending: view.pending
                onTakenBack: composer.focusEditor()
            }
            NoticeFooter {
                id: notices
                width: parent.width
                notices: view.notices
                onOpenAuditLog: pane.openAuditLog()
            }
            BackgroundBar {
                id: background
                width: parent.width
                status: view.status
                onOpened: pane.openBackground()
            }
            RunningBar {
                id: running
                width: parent.width
                status: view.status
                onBackgroundOpened: pane.openBackground()
            }
        }
        Composer {
            id: composer
            Layout.fillWidth: true
            model: view.composer
            status: view.status
            room: pane.height
            dropTargeted: drop.containsDrag
            onSent: timeline.scrollToEnd()
        }
    }
}
