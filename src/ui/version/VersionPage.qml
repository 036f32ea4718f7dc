pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Version

// The regions of the version window, and the sheet that lies over them.
FocusScope {
    id: page

    required property VersionView view
    readonly property bool sheetShown: sheet.item !== null

    readonly property bool ready: view.state === VersionView.Ready
    property bool detailShown: true

    function openFind(): void {
        if (ready)
            find.open()
    }
    function findNext(step: int): void { find.go(step) }
    function goToHunk(step: int): void { detail.goToHunk(step) }
    function moveRegion(step: int): void {
        const regions = []
        for (const region of [side, table, detail.filesList, detail.diffList, header]) {
            if (region.visible)
                regions.push(region)
        }
        let here = 0
        while (here < regions.length - 1 && !regions[here].activeFocus)
            ++here
        regions[(here + step + regions.length) % regions.length].forceActiveFocus(Qt.TabFocusReason)
    }
    function ask(kind: int): void {
        sheet.setSource("RequestSheet.qml", { requests: view.requests, draft: view.draft(kind) })
    }

    Component.onCompleted: table.forceActiveFocus()

    VersionHeader {
        id: header
        width: parent.width
        view: page.view
    }

    VersionSide {
        id: side
        anchors.top: header.bottom
        anchors.bottom: parent.bottom
        width: Math.min(page.view.measures.side, page.width / 2)
        view: page.view
        current: page.view.selected.length === 0 && page.ready ? page.view.detail.path : ""
        onPicked: path => {
            page.detailShown = true
            page.view.selectChange(path)
        }
        onAsked: kind => page.ask(kind)
    }
    Splitter {
        id: sideSplitter
        anchors.top: header.bottom
        anchors.bottom: parent.bottom
        anchors.left: side.right
        value: page.view.measures.side
        from: 200
        to: 400
        label: "왼쪽 칸 너비"
        onMoved: value => page.view.measures.side = value
    }

    Item {
        id: body
        anchors.top: header.bottom
        anchors.bottom: parent.bottom
        anchors.left: sideSplitter.right
        anchors.right: parent.right
        visible: page.ready

        Column {
            id: news
            width: parent.width

            Banner {
                width: parent.width
                visible: page.view.fetch.notice.length > 0
                tone: page.view.fetch.isProblem ? "warning" : "success"
                wraps: true
                text: page.view.fetch.notice
                onClosed: page.view.fetch.closeNotice()
            }
            Banner {
                id: sentBanner

                property string key

                width: parent.width
                visible: key.length > 0
                tone: "info"
                text: ""
                actionText: "세션으로 가기"
                onActionTriggered: page.view.goToSession(key)
                onClosed: key = ""
            }
            FaultBanner {
                width: parent.width
                view: page.view
            }
            LockBanner {
                width: parent.width
                view: page.view
            }
            Banner {
                width: parent.width
                visible: page.view.headBanner.length > 0
                tone: "warning"
                closable: false
                text: page.view.headBanner
                actionText: "이 브랜치 보기"
                onActionTriggered: page.view.allBranches = false
            }
            FetchLine {
                width: parent.width
                visible: page.view.fetch.running
                onCancelTriggered: page.view.fetch.cancel()
            }
            FindBar {
                id: find
                width: parent.width
                view: page.view
                onFound: row => table.showRow(row)
                onClosed: table.forceActiveFocus()
            }
        }
        CommitTable {
            id: table
            anchors.top: news.bottom
            anchors.bottom: detailSplitter.visible ? detailSplitter.top : parent.bottom
            width: parent.width
            view: page.view
            onOpened: {
                page.detailShown = true
                detail.filesList.forceActiveFocus(Qt.TabFocusReason)
            }
            onPicked: page.detailShown = true
        }
        Splitter {
            id: detailSplitter
            anchors.bottom: detail.top
            width: parent.width
            visible: page.detailShown
            vertical: false
            after: true
            value: detail.height
            from: 160
            to: Math.max(160, body.height - 160)
            label: "아래 칸 높이"
            onMoved: value => page.view.measures.detail = value
        }
        DetailPane {
            id: detail
            anchors.bottom: parent.bottom
            width: parent.width
            height: Math.max(160, Math.min(page.view.measures.detail, body.height - 160))
            visible: page.detailShown
            view: page.view
            detail: page.view.detail
            onClosed: {
                page.detailShown = false
                table.forceActiveFocus()
            }
            onBackTriggered: table.forceActiveFocus(Qt.TabFocusReason)
        }
    }

    StatePane {
        anchors.fill: body
        visible: !page.ready
        view: page.view
    }

    Connections {
        target: page.view.requests
        function onSent(key: string, title: string): void {
            sentBanner.text = "“" + title + "” 세션에 부탁했습니다. 끝나면 여기가 새로 읽힙니다"
            sentBanner.key = key
        }
    }
    Loader {
        id: sheet
        onLoaded: (item as Dialog).open()
    }
    Connections {
        target: sheet.item as Dialog
        function onClosed(): void {
            sheet.source = ""
            side.focusRequests()
        }
    }
}
