import QtQuick
import QtQuick.Layouts
import Vesk.Controls
import Vesk.Version

// Which project, which part of its history, and how fresh it is.
FocusScope {
    id: header

    required property VersionView view

    implicitHeight: Theme.px(48)
    Accessible.role: Accessible.ToolBar
    Accessible.name: "형상관리 머리"

    Rectangle {
        anchors.fill: parent
        color: Theme.panel
    }
    RowLayout {
        anchors.fill: parent
        anchors.leftMargin: 16
        anchors.rightMargin: 12
        spacing: 12

        ProjectSquare {
            color: header.view.lane >= 0 ? Theme.lane(header.view.lane) : header.view.color
        }
        ProjectChoice {
            Layout.maximumWidth: Math.max(80, header.width / 4)
            Layout.leftMargin: -10
            alias: header.view.alias
            projects: header.view.projects
            tip: "다른 프로젝트의 형상관리"
            onChosen: alias => header.view.openProject(alias)
        }
        Label {
            Layout.leftMargin: -10
            text: "형상관리"
            color: Theme.text2
        }
        SegmentedControl {
            focus: true
            enabled: header.view.state === VersionView.Ready
            labels: ["이 브랜치", "모든 브랜치"]
            label: "보이는 커밋"
            currentIndex: header.view.allBranches ? 1 : 0
            onActivated: index => header.view.allBranches = index === 1
        }
        Item { Layout.fillWidth: true }
        RunningMark {
            visible: header.view.loading && header.view.state !== VersionView.Loading
        }
        Label {
            text: header.view.readAt
            font: Theme.secondary
            color: Theme.text3
        }
        VButton {
            text: "원격 확인(fetch)"
            iconName: "fetch"
            enabled: header.view.state === VersionView.Ready && !header.view.fetch.running
            tip: "원격의 새 커밋을 알아봅니다. 작업 트리는 바뀌지 않습니다"
            onClicked: header.view.startFetch()
        }
        IconButton {
            iconName: "refresh"
            text: "다시 읽기"
            keys: "F5"
            onClicked: header.view.reload()
        }
    }
    Hairline {
        anchors.bottom: parent.bottom
        width: parent.width
    }
}
