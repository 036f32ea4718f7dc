pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Chat
import Vesk.Issues

// The issue that is chosen: what it is, its fields, its text, and what it is related to.
FocusScope {
    id: pane

    required property IssuesView view

    enum Mode { Edit, Preview, Both }

    property int mode: IssueDetailPane.Preview
    readonly property bool editing: body.editing

    function save(): void { detail.saveNow() }
    function edit(): void {
        if (mode === IssueDetailPane.Preview)
            mode = IssueDetailPane.Edit
        body.focusEditor()
    }

    Accessible.role: Accessible.Pane
    Accessible.name: "이슈 상세"

    IssueDetail {
        id: detail
        view: pane.view
        previewShown: pane.mode !== IssueDetailPane.Edit && pane.visible
    }
    EmptyState {
        anchors.centerIn: parent
        visible: !detail.open
        text: pane.view.offersTriage ? "아직 이슈가 없습니다. 세션이 프로젝트를 훑어 일감을 이슈로 적게 할 수 있습니다."
            : "목록에서 이슈를 고르면 여기에서 읽고 고칩니다"
        actionText: pane.view.offersTriage ? "세션에게 일감 찾기 부탁하기" : ""
        onActionTriggered: pane.view.startTriage()
    }
    Item {
        anchors.fill: parent
        visible: detail.open

        IssueDetailHead {
            id: head
            x: 20
            y: 12
            width: parent.width - 40
            detail: detail
            mode: pane.mode
            onModeChosen: mode => pane.mode = mode
        }
        IssueFields {
            id: fields
            anchors.top: head.bottom
            anchors.topMargin: 8
            x: 20
            width: parent.width - 40
            detail: detail
        }
        Lazy {
            id: conflict
            anchors.top: fields.bottom
            anchors.topMargin: wanted ? 10 : 0
            x: 20
            width: parent.width - 40
            wanted: (detail.document?.hasConflict ?? false) || (detail.document?.saveFailed ?? false)
            // What was settled there leaves no button behind to hold the keys.
            onWantedChanged: {
                if (!wanted && activeFocus)
                    body.forceActiveFocus()
            }
            file: Qt.resolvedUrl("IssueConflict.qml")
            properties: ({ detail: detail })
        }
        IssueBody {
            id: body
            anchors.top: conflict.bottom
            anchors.topMargin: 8
            anchors.bottom: parent.bottom
            anchors.left: parent.left
            anchors.right: edge.left
            detail: detail
            mode: pane.mode
            focus: true
        }
        Hairline {
            id: edge
            anchors.right: rail.left
            anchors.top: body.top
            anchors.bottom: parent.bottom
        }
        IssueRail {
            id: rail
            anchors.right: parent.right
            anchors.top: body.top
            anchors.bottom: parent.bottom
            width: Math.min(316, pane.width * 0.36)
            detail: detail
        }
    }
    Loader {
        id: linkSheet
        onLoaded: (item as Dialog).open()

        Connections {
            target: detail.links
            function onStopped(): void {
                linkSheet.setSource("qrc:/qt/qml/Vesk/Chat/LinkSheet.qml", { links: detail.links })
            }
        }
        Connections {
            target: linkSheet.item as Dialog
            function onClosed(): void { linkSheet.source = "" }
        }
    }
}
