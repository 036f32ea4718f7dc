pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Version

// What changes the repository is asked of a session.
FocusScope {
    id: foot

    required property VersionView view
    // One button for all requests, where the list above would be left without room.
    property bool compact: false

    signal asked(int kind)

    implicitHeight: column.height + 24

    // What is asked for depends on the last reading.
    property int reading: 0

    Connections {
        target: foot.view
        function onStatusChanged(): void { ++foot.reading }
        function onStateChanged(): void { ++foot.reading }
    }
    Hairline { width: parent.width }
    Column {
        id: column
        x: 12
        y: 12
        width: parent.width - 24
        spacing: 6

        Label {
            width: parent.width
            visible: !foot.compact
            bottomPadding: 2
            text: "쓰기는 세션에 부탁합니다. 누르면 보낼 말을 고치고 세션을 고를 수 있습니다."
            font: Theme.meta
            color: Theme.text3
            wrapMode: Text.WordWrap
            elide: Text.ElideNone
            lineHeight: Theme.metaLine
            lineHeightMode: Text.FixedHeight
        }
        RequestButton {
            width: parent.width
            focus: !foot.compact
            text: "커밋 부탁하기"
            iconName: "commit"
            visible: !foot.compact
            reason: foot.reading >= 0 ? foot.view.requestReason(VersionRequests.Commit) : ""
            onClicked: foot.asked(VersionRequests.Commit)
        }
        RequestButton {
            width: parent.width
            text: "푸시 부탁하기"
            iconName: "arrow-up"
            visible: !foot.compact
            reason: foot.reading >= 0 ? foot.view.requestReason(VersionRequests.Push) : ""
            onClicked: foot.asked(VersionRequests.Push)
        }
        RequestButton {
            width: parent.width
            text: "충돌 풀기 부탁하기"
            iconName: "version"
            visible: !foot.compact
            reason: foot.reading >= 0 ? foot.view.requestReason(VersionRequests.Resolve) : ""
            onClicked: foot.asked(VersionRequests.Resolve)
        }
        RequestButton {
            id: others
            width: parent.width
            focus: foot.compact
            text: foot.compact ? "부탁하기…" : "다른 부탁…"
            iconName: "more"
            reason: foot.reading >= 0 ? foot.view.requestReason(VersionRequests.Any) : ""
            onClicked: menu.setSource("RequestMenu.qml", { parent: others, view: foot.view, all: foot.compact })
        }
    }
    Loader {
        id: menu
        onLoaded: (item as Menu).open()
    }
    Connections {
        target: menu.item as RequestMenu
        function onAsked(kind: int): void { foot.asked(kind) }
        function onClosed(): void { menu.source = "" }
    }
}
