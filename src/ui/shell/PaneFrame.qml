import QtQuick
import Vesk.Controls
import Vesk.Shell

// One pane without its sessions: its tabs, and what stands below them while it shows none.
Item {
    id: frame

    required property Workspace workspace
    required property int index
    required property int pane
    required property rect place
    required property PaneTabs tabs
    required property int shownIndex
    required property bool focused
    required property bool expecting

    readonly property bool lone: workspace.panes.count === 1
    readonly property bool bare: shownIndex < 0
    readonly property alias tabStrip: strip
    // Not by its type: a start without sessions does not read that.
    readonly property var shownTabs: strip.item

    // By the keyboard, while another pane was the focused one.
    signal entered()
    signal resumeRequested()
    signal tabMenuRequested(Item tab, string key, string title)
    signal tabDragged(point scenePoint)

    // Tells the drag before which tab it is.
    function aim(drag: TabDrag): void {
        if (shownTabs) {
            const gap = shownTabs.gapAt(drag.point.x - x)
            drag.aimBetweenTabs(gap.position, Qt.rect(x + gap.x - 1, y, 2, strip.height))
        }
    }

    x: place.x
    y: place.y
    width: place.width
    height: place.height
    clip: !lone
    Accessible.role: Accessible.Grouping
    Accessible.name: "칸 " + (index + 1)

    Lazy {
        id: strip
        width: parent.width
        wanted: !frame.bare || !frame.lone
        file: Qt.resolvedUrl("SessionTabs.qml")
        properties: ({ frame: frame, focus: true })
    }
    Lazy {
        anchors.centerIn: parent
        width: Math.min(480, parent.width - 32)
        wanted: frame.bare && frame.lone && frame.workspace.agentMissing
        file: Qt.resolvedUrl("NotInstalled.qml")
        properties: ({ workspace: frame.workspace })
    }
    TapHandler {
        enabled: frame.bare && !frame.focused
        onTapped: frame.workspace.panes.focusPane(frame.pane)
    }
    EmptyState {
        readonly property bool ready: frame.workspace.hasProjects

        anchors.centerIn: parent
        visible: frame.bare && !frame.expecting && !(frame.lone && frame.workspace.agentMissing)
        title: ready ? "열린 세션이 없습니다" : "Vesk"
        text: ready ? "새 세션을 열면 여기에서 에이전트와 대화합니다"
            : "프로젝트 폴더를 이 창에 끌어다 놓아도 됩니다"
        actionText: ready ? "새 세션" : ""
        actionKeys: frame.focused ? "Ctrl N" : ""
        otherText: ready && frame.lone ? "지난 대화" : ""
        otherKeys: "Ctrl R"
        onOtherTriggered: frame.resumeRequested()
        onActionTriggered: {
            frame.workspace.panes.focusPane(frame.pane)
            frame.workspace.newSession()
        }
    }
}
