import QtQuick
import Vesk.Controls
import Vesk.Chat

// Where a message is written, with what goes along with it and what governs the next turn.
Rectangle {
    id: composer

    required property ComposerModel model
    required property RunStatus status
    property bool dropTargeted: false
    // The height of the surface that it stands in, which it never fills.
    property real room: Infinity

    signal sent()

    implicitHeight: column.height
    color: Theme.panel

    function focusEditor(): void {
        editor.focusText()
    }
    Connections {
        target: composer.model
        function onSent(): void {
            composer.sent()
        }
    }
    // Not read before the first "/" or "@".
    Loader {
        id: popup
        readonly property bool wanted: composer.model.completion.isOpen
        onWantedChanged: {
            if (item)
                (item as CompletionPopup).visible = wanted
            else if (wanted)
                setSource(Qt.resolvedUrl("CompletionPopup.qml"),
                          { parent: column, completion: composer.model.completion, visible: true })
        }
    }
    Binding {
        when: popup.status === Loader.Ready
        target: popup.item
        property: "width"
        value: column.width
    }
    Binding {
        when: popup.status === Loader.Ready
        target: popup.item
        property: "y"
        value: 6 - (popup.item?.height ?? 0)
    }

    Hairline {
        width: parent.width
    }
    Column {
        id: column
        x: 12
        width: parent.width - 24
        topPadding: 10
        bottomPadding: 8
        spacing: 6

        FitColumn {
            id: files
            width: parent.width
            visible: chips.count > 0
            room: Math.min(composer.room * 0.2, composer.room * 0.9 - tools.height - editor.least)

            AttachmentChips {
                id: chips
                width: parent.width
                attachments: composer.model.attachments
            }
        }
        Row {
            visible: composer.model.attachments.refusal.length > 0
            spacing: 6

            Icon {
                anchors.verticalCenter: parent.verticalCenter
                name: "warning"
                size: 14
                color: Theme.danger
            }
            Label {
                width: Math.min(implicitWidth, column.width - 24)
                text: composer.model.attachments.refusal
                font: Theme.secondary
                color: Theme.danger
                Accessible.role: Accessible.AlertMessage
                Accessible.name: text
            }
        }
        ComposerEditor {
            id: editor
            width: parent.width
            model: composer.model
            room: composer.room * 0.6 - tools.height - (files.visible ? files.height : 0)
            lit: composer.dropTargeted
            nextItem: tools.firstItem
            onSendRequested: composer.model.send()
            onInterruptRequested: composer.status.softInterrupt()
        }
        ComposerTools {
            id: tools
            width: parent.width
            model: composer.model
            onSendRequested: composer.model.send()
            onStopRequested: composer.status.stop()
        }
    }
}
