pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Vesk.Controls
import Vesk.Version

// What the commit is called, by whom and when; below that what else its message says.
Item {
    id: head

    required property CommitDetail detail
    required property real mostBody

    property bool bodyShown: false

    signal copyAsked(string text)
    signal closed()

    implicitHeight: line.height + (body.visible ? body.height : 0) + 1

    Rectangle {
        anchors.fill: parent
        color: Theme.panel
    }
    RowLayout {
        id: line
        x: 16
        width: parent.width - 24
        height: Theme.px(44)
        spacing: 8

        Label {
            Layout.fillWidth: true
            Layout.maximumWidth: implicitWidth + 1
            text: head.detail.title
            font: Theme.section
        }
        Label {
            Layout.leftMargin: 4
            visible: !head.detail.isWorkTree
            text: head.detail.hash.slice(0, 8)
            font: Theme.codeSmall
            color: Theme.text3
            Accessible.name: "번호 " + text
        }
        IconButton {
            Layout.leftMargin: -4
            visible: !head.detail.isWorkTree
            side: 24
            iconSize: 14
            iconName: "copy"
            text: "번호 복사"
            onClicked: head.copyAsked(head.detail.hash)
        }
        Label {
            Layout.minimumWidth: Math.min(implicitWidth, 120)
            visible: text.length > 0
            text: head.detail.meta
            font: Theme.secondary
            color: Theme.text2
        }
        VButton {
            Layout.preferredHeight: Theme.px(24)
            visible: head.detail.body.length > 0
            kind: VButton.Quiet
            font: Theme.secondary
            text: head.bodyShown ? "본문 접기" : "본문 보기"
            onClicked: head.bodyShown = !head.bodyShown
        }
        Item { Layout.fillWidth: true }
        ChangeSums {
            added: head.detail.added
            removed: head.detail.removed
        }
        IconButton {
            id: more
            iconName: "more"
            text: "복사할 것"
            opened: menu.item !== null
            onClicked: menu.setSource("DetailMenu.qml", { parent: more, detail: head.detail, y: more.height + 4 })
        }
        IconButton {
            iconName: "close"
            iconSize: 14
            text: "상세 닫기"
            onClicked: head.closed()
        }
    }
    Flickable {
        id: body
        anchors.top: line.bottom
        x: 16
        width: parent.width - 32
        height: Math.min(words.height + 10, head.mostBody)
        visible: head.bodyShown && head.detail.body.length > 0
        contentHeight: words.height
        clip: true
        boundsBehavior: Flickable.StopAtBounds

        TextEdit {
            id: words
            width: body.width
            readOnly: true
            selectByMouse: true
            activeFocusOnTab: true
            textFormat: TextEdit.PlainText
            wrapMode: TextEdit.Wrap
            text: head.detail.body
            font: Theme.ui
            color: Theme.text2
            selectionColor: Theme.selected
            selectedTextColor: Theme.text
            Accessible.name: "커밋 본문"
        }
    }
    Loader {
        id: menu
        onLoaded: (item as Menu).open()
    }
    Connections {
        target: menu.item as DetailMenu
        function onCopyAsked(text: string): void { head.copyAsked(text) }
        function onClosed(): void { menu.source = "" }
    }
    Hairline {
        anchors.bottom: parent.bottom
        width: parent.width
    }
}
