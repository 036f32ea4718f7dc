import QtQuick
import Vesk.Controls
import Vesk.Issues

// Scope, counts, what is drawn, and the zoom.
Item {
    id: bar

    required property IssueGraphModel graph
    required property IssuesView view

    function toggleProblems(): void {
        if (problems.item)
            problems.source = ""
        else
            problems.setSource(Qt.resolvedUrl("IssueGraphProblems.qml"),
                               { parent: problemsButton, graph: bar.graph, visible: true })
    }

    // Without room for all, the words go first that stand elsewhere too.
    readonly property bool narrow: width < Theme.px(680)
    readonly property bool narrower: width < Theme.px(500)
    readonly property bool narrowest: width < Theme.px(400)

    implicitHeight: Theme.px(38)
    Accessible.role: Accessible.ToolBar
    Accessible.name: "의존관계 도구"

    Rectangle {
        anchors.fill: parent
        color: Theme.panel
    }
    Hairline {
        anchors.bottom: parent.bottom
        width: parent.width
    }

    Row {
        id: left
        x: 20
        height: parent.height
        spacing: 12

        Label {
            height: parent.height
            visible: !bar.narrow
            text: "의존관계"
            font: Theme.secondaryBold
        }
        VButton {
            anchors.verticalCenter: parent.verticalCenter
            height: Theme.px(24)
            text: bar.graph.milestone.length > 0 ? bar.graph.milestone : "마일스톤 전체"
            font: Theme.secondary
            rightPadding: 12 + Theme.px(12)
            Accessible.role: Accessible.ButtonMenu
            Accessible.name: "마일스톤 " + text
            onClicked: menu.setSource(Qt.resolvedUrl("IssueGraphMilestones.qml"),
                                      { parent: this, graph: bar.graph, visible: true })

            Icon {
                anchors.right: parent.right
                anchors.rightMargin: 8
                anchors.verticalCenter: parent.verticalCenter
                name: "chevron-down"
                size: 12
                color: Theme.text3
            }
        }
        IssueGraphCount {
            visible: !bar.narrowest
            worded: !bar.narrower
            value: bar.graph.readyCount
            word: "지금 가능"
            ink: Theme.success
        }
        IssueGraphCount {
            visible: !bar.narrowest
            worded: !bar.narrower
            value: bar.graph.blockedCount
            word: "막힘"
            ink: Theme.danger
        }
        VButton {
            id: problemsButton
            anchors.verticalCenter: parent.verticalCenter
            height: Theme.px(24)
            visible: bar.graph.problems.count > 0
            kind: VButton.Quiet
            iconName: "warning"
            ink: Theme.warning
            text: (bar.narrow ? "" : "관계 문제 ") + bar.graph.problems.count
            font: Theme.secondary
            tip: bar.narrow ? "관계 문제" : ""
            Accessible.name: "관계 문제 " + bar.graph.problems.count
            Accessible.role: Accessible.ButtonMenu
            onClicked: bar.toggleProblems()
        }
    }
    Row {
        anchors.right: parent.right
        anchors.rightMargin: 12
        height: parent.height
        spacing: 4

        IssueGraphLegend {
            anchors.verticalCenter: parent.verticalCenter
            rightPadding: 8
            visible: bar.width - left.width > Theme.px(520)
        }
        VButton {
            anchors.verticalCenter: parent.verticalCenter
            height: Theme.px(24)
            kind: VButton.Quiet
            iconName: bar.graph.showsResolved ? "check" : ""
            text: "풀린 것"
            font: Theme.secondary
            checkable: true
            checked: bar.graph.showsResolved
            tip: checked ? "풀린 관계를 감춥니다" : "풀린 관계도 보입니다"
            Accessible.role: Accessible.CheckBox
            Accessible.checked: checked
            onToggled: bar.graph.showsResolved = checked
        }
        IconButton {
            anchors.verticalCenter: parent.verticalCenter
            side: 24
            iconName: "minus"
            text: "작게"
            keys: "−"
            enabled: bar.graph.stage.canZoomOut
            onClicked: bar.graph.stage.zoomOut()
        }
        Label {
            width: Theme.px(40)
            height: parent.height
            visible: !bar.narrowest
            text: bar.graph.stage.percent + "%"
            font: Theme.secondary
            color: Theme.text2
            horizontalAlignment: Text.AlignHCenter
        }
        IconButton {
            anchors.verticalCenter: parent.verticalCenter
            side: 24
            iconName: "plus"
            text: "크게"
            keys: "+"
            enabled: bar.graph.stage.canZoomIn
            onClicked: bar.graph.stage.zoomIn()
        }
        IconButton {
            anchors.verticalCenter: parent.verticalCenter
            side: 24
            iconName: "zoom-fit"
            text: "화면에 맞추기"
            keys: "0"
            onClicked: bar.graph.stage.fit()
        }
    }

    // By address: a component written here could not see this file's ids.
    Loader {
        id: menu
    }
    Loader {
        id: problems
    }
    Connections {
        target: menu.item as IssueGraphMilestones
        function onClosed(): void {
            menu.source = ""
        }
    }
    Connections {
        target: problems.item as IssueGraphProblems
        function onClosed(): void {
            problems.source = ""
        }
    }
}
