pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Issues

// Which project and which view, what is wrong with the relations, and what can be done.
FocusScope {
    id: header

    required property IssuesView view

    readonly property bool ready: view.folderState === IssuesView.Ready

    // Without room for all, the words go first that stand elsewhere too.
    readonly property bool narrow: width < Theme.px(1000)

    signal newTriggered()
    signal syncTriggered()

    implicitHeight: Theme.px(48)
    Accessible.role: Accessible.ToolBar
    Accessible.name: "이슈 창의 머리"

    Rectangle {
        anchors.fill: parent
        color: Theme.panel
    }
    Hairline {
        anchors.bottom: parent.bottom
        width: parent.width
    }
    ProjectSquare {
        id: square
        x: 16
        anchors.verticalCenter: parent.verticalCenter
        color: header.view.lane >= 0 ? Theme.lane(header.view.lane) : header.view.color
    }
    ProjectChoice {
        id: project
        focus: true
        anchors.left: square.right
        anchors.leftMargin: 2
        anchors.verticalCenter: parent.verticalCenter
        width: Math.min(implicitWidth, Math.max(80, header.width / 5))
        alias: header.view.alias
        projects: header.view.projects
        tip: "다른 프로젝트의 이슈"
        onChosen: alias => header.view.openProject(alias)
    }
    Label {
        id: word
        anchors.left: project.right
        anchors.leftMargin: 2
        anchors.verticalCenter: parent.verticalCenter
        visible: !header.narrow
        text: "이슈"
        color: Theme.text2
    }
    SegmentedControl {
        id: segments
        anchors.left: header.narrow ? project.right : word.right
        anchors.leftMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        enabled: header.ready
        label: "보기"
        labels: ["목록", "의존관계", "칸반"]
        icons: ["list", "graph", "kanban"]
        currentIndex: header.view.section
        onActivated: index => header.view.section = index
    }
    Row {
        anchors.right: parent.right
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        visible: header.ready
        spacing: 12

        VButton {
            id: problems
            visible: header.view.problemCount > 0
            iconName: "warning"
            text: header.narrow ? header.view.problemCount : "관계 문제 " + header.view.problemCount
            tip: header.narrow ? "관계 문제" : ""
            ink: Theme.warning
            edge: Theme.warning
            Accessible.role: Accessible.ButtonMenu
            onClicked: problemList.setSource(Qt.resolvedUrl("IssueProblems.qml"),
                                             { parent: problems, view: header.view, visible: true })
            Loader { id: problemList }
            Connections {
                target: problemList.item as IssueProblems
                function onClosed(): void { problemList.source = "" }
            }
        }
        VButton {
            text: header.narrow ? "" : "보드 맞추기…"
            iconName: header.narrow ? "rules" : ""
            tip: header.narrow ? "보드 맞추기…" : ""
            Accessible.name: "보드 맞추기…"
            onClicked: header.syncTriggered()
        }
        VButton {
            kind: VButton.Primary
            iconName: "plus"
            text: "새 이슈"
            keys: header.narrow ? "" : "Ctrl Shift N"
            onClicked: header.newTriggered()
        }
    }
}
