pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Issues

// What an issue is related to: other issues, sessions, its file.
FocusScope {
    id: rail

    required property IssueDetail detail

    Accessible.role: Accessible.Pane
    Accessible.name: "관계"

    Flickable {
        anchors.fill: parent
        contentHeight: column.height + 32
        boundsBehavior: Flickable.StopAtBounds
        clip: true

        Column {
            id: column
            x: 16
            y: 12
            width: rail.width - 32
            spacing: 16

            IssueRelations {
                width: parent.width
                title: "선행"
                waitsFor: true
                rows: rail.detail.blockedBy
                detail: rail.detail
            }
            IssueRelations {
                width: parent.width
                title: "후행"
                waitsFor: false
                rows: rail.detail.blocks
                detail: rail.detail
            }
            IssueSessionList {
                width: parent.width
                visible: count > 0
                view: rail.detail.view
                path: rail.detail.document?.path ?? ""
            }
            Column {
                width: parent.width
                spacing: 2

                Label {
                    text: "파일"
                    font: Theme.meta
                    color: Theme.text2
                }
                Label {
                    id: file
                    width: parent.width
                    text: rail.detail.fileText
                    font: Theme.codeSmall
                    elide: Text.ElideMiddle
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text

                    HoverTip {
                        wanted: over.hovered
                        text: rail.detail.document?.path ?? ""
                    }
                    HoverHandler { id: over }
                }
                Label {
                    width: parent.width
                    text: rail.detail.unsavedText.length > 0 ? rail.detail.unsavedText : rail.detail.diskText
                    font: Theme.meta
                    color: rail.detail.unsavedText.length > 0 ? Theme.warning : Theme.text3
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                }
            }
        }
    }
}
