pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Issues

// The issues of one project.
Window {
    id: window

    required property IssuesView view

    title: "이슈 — " + view.alias
    minimumWidth: 900
    minimumHeight: 600
    color: Theme.canvas

    // With the folder's state what can be worked with becomes another.
    function takeKeys(): void {
        if (view.folderState === IssuesView.Ready)
            sections.focusList()
        else
            folder.forceActiveFocus(Qt.TabFocusReason)
    }

    Component.onCompleted: takeKeys()
    onActiveChanged: {
        if (active)
            view.noteActivated()
    }

    FocusScope {
        id: body
        anchors.fill: parent
        focus: true
        // From the editor first back to the list.
        Keys.onEscapePressed: {
            if (!sections.leaveEditor())
                window.close()
        }

        IssuesHeader {
            id: header
            width: parent.width
            view: window.view
            onNewTriggered: sheets.openNew()
            onSyncTriggered: sheets.openSync()
        }
        Lazy {
            id: folder
            anchors.top: header.bottom
            anchors.bottom: parent.bottom
            width: parent.width
            height: parent.height - header.height
            wanted: window.view.folderState !== IssuesView.Ready
            file: Qt.resolvedUrl("IssueFolderPane.qml")
            properties: ({ view: window.view })
        }
        IssueSections {
            id: sections
            anchors.top: header.bottom
            anchors.bottom: parent.bottom
            width: parent.width
            visible: window.view.folderState === IssuesView.Ready
            view: window.view
            takesFocus: !header.activeFocus
        }
        IssueNotices {
            anchors.right: parent.right
            anchors.bottom: parent.bottom
            anchors.margins: 16
            view: window.view
            onKeysFreed: {
                if (sections.visible)
                    sections.forceActiveFocus(Qt.TabFocusReason)
                else
                    window.takeKeys()
            }
        }
        IssueSheets {
            id: sheets
            view: window.view
        }
        IssueKeys {
            enabled: !sheets.shown
            view: window.view
            ready: window.view.folderState === IssuesView.Ready
            onCloseTriggered: window.close()
            onSearchTriggered: sections.focusSearch()
            onNewTriggered: sheets.openNew()
            onSaveTriggered: sections.save()
            onRegionTriggered: step => sections.moveRegion(step, header)
        }
    }
    Connections {
        target: window.view
        function onCreated(): void { sections.edit() }
        function onFolderStateChanged(): void { window.takeKeys() }
    }
}
