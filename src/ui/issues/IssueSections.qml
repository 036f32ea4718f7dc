import QtQuick
import Vesk.Controls
import Vesk.Issues

// The three views of a folder; one is shown.
FocusScope {
    id: sections

    required property IssuesView view
    // A section that comes takes the keyboard, too.
    property bool takesFocus: true

    function focusList(): void { list.focusList() }
    function focusSearch(): void {
        if (view.section === IssuesView.Graph)
            view.section = IssuesView.List
        if (view.section === IssuesView.List)
            list.focusSearch()
        else
            kanbanSearch.forceActiveFocus()
    }
    function leaveEditor(): bool {
        const left = detail.editing
        if (left)
            list.focusList()
        return left
    }
    function save(): void { detail.save() }
    function edit(): void { detail.edit() }
    // F6 goes through these.
    function moveRegion(step: int, header: Item): void {
        const regions = [header]
        for (const region of [list, detail, graph, pane]) {
            if (region.visible)
                regions.push(region)
        }
        let here = 0
        while (here < regions.length - 1 && !regions[here].activeFocus)
            ++here
        const next = regions[(here + step + regions.length) % regions.length]
        if (next === list)
            list.focusList()
        else
            next.forceActiveFocus(Qt.TabFocusReason)
    }

    readonly property bool listed: view.section === IssuesView.List

    // Keys that were in the view that went go to the one that came, once that is there.
    function followSection(): void {
        // The view that went may have left them to what is around it.
        const now = Window.activeFocusItem
        let around = sections as Item
        while (around && around !== now)
            around = around.parent
        if (!activeFocus && now && !around || ((pane.item as Item)?.activeFocus ?? false))
            return
        if (!listed && !kanbanSearch.activeFocus)
            (pane.item as Item)?.forceActiveFocus(Qt.TabFocusReason)
        else if (listed && !list.activeFocus && !detail.activeFocus && !graph.activeFocus)
            list.focusList()
    }

    Connections {
        target: sections.view
        function onSectionChanged(): void { later.start() }
    }
    Timer {
        id: later
        interval: 0
        onTriggered: sections.followSection()
    }

    IssueListPane {
        id: list
        width: 320
        height: parent.height
        visible: sections.listed
        view: sections.view
        onDetailWanted: detail.forceActiveFocus(Qt.TabFocusReason)
        onVisibleChanged: {
            if (visible && sections.takesFocus)
                sections.focusList()
        }
    }
    Hairline {
        id: edge
        anchors.left: list.right
        height: parent.height
        visible: sections.listed
    }
    IssueDetailPane {
        id: detail
        anchors.left: edge.right
        anchors.right: parent.right
        height: graph.visible ? graph.y - splitter.height : parent.height
        visible: sections.listed
        view: sections.view
    }
    Splitter {
        id: splitter
        anchors.left: edge.right
        anchors.right: parent.right
        anchors.bottom: graph.top
        visible: graph.visible
        vertical: false
        after: true
        value: graph.height
        from: 120
        to: Math.max(120, sections.height - Theme.px(300))
        label: "의존관계 높이"
        onMoved: value => sections.view.graphHeight = value
    }
    // Small below the detail; the other views have the whole window.
    Loader {
        id: graph
        anchors.left: edge.right
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        height: Math.min(sections.view.graphHeight, Math.max(120, sections.height - Theme.px(300)))
        visible: sections.listed && status === Loader.Ready && sections.view.issueCount > 0
        Component.onCompleted: setSource("IssueGraphPane.qml", { view: sections.view })
    }
    Item {
        id: kanbanHead
        width: parent.width
        height: visible ? Theme.px(44) : 0
        visible: sections.view.section === IssuesView.Kanban

        TextField {
            id: kanbanSearch
            x: 16
            anchors.verticalCenter: parent.verticalCenter
            width: 280
            search: true
            keys: "Ctrl F"
            placeholderText: "번호·제목·영역 찾기"
            onTextEdited: sections.view.query = text
            Connections {
                target: sections.view
                function onQueryChanged(): void {
                    if (kanbanSearch.text !== sections.view.query)
                        kanbanSearch.text = sections.view.query
                }
            }
        }
    }
    Loader {
        id: pane

        readonly property string file: sections.view.section === IssuesView.Graph ? "IssueGraphPane.qml"
            : sections.view.section === IssuesView.Kanban ? "IssueKanbanPane.qml" : ""

        anchors.top: kanbanHead.bottom
        anchors.bottom: parent.bottom
        width: parent.width
        visible: !sections.listed
        onFileChanged: {
            if (file.length > 0)
                setSource(file, { view: sections.view })
            else
                source = ""
        }
        onLoaded: {
            if (sections.takesFocus)
                (item as Item).forceActiveFocus(Qt.ShortcutFocusReason)
        }
    }
}
