pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Shell

// What waits for the person, the longest waiting first. There only while something waits; a part of the sidebar's
// height at most, then it scrolls.
Rectangle {
    id: box

    required property Workspace workspace
    required property Item sidebar
    readonly property int count: list.count

    implicitHeight: Math.min(Math.round(sidebar.height * 0.4), heading.height + list.contentHeight + 12)
    radius: Theme.radius
    color: Theme.waitSoft
    border.color: Theme.waitLine

    Item {
        id: heading
        x: 12
        y: 6
        width: parent.width - 20
        height: Theme.px(26)

        Label {
            anchors.verticalCenter: parent.verticalCenter
            text: "내 차례"
            font: Theme.secondaryBold
            color: Theme.wait
        }
        Rectangle {
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            width: Math.max(Theme.px(18), number.implicitWidth + 10)
            height: Theme.px(16)
            radius: Theme.radiusSmall
            color: Theme.waitFill
            border.width: Theme.dark ? 0 : 1
            border.color: Theme.wait

            Label {
                id: number
                anchors.centerIn: parent
                text: box.count
                font: Theme.metaBold
                color: Theme.onWait
                Accessible.name: "내 차례 " + box.count + "개"
            }
        }
    }

    ListView {
        id: list
        anchors.top: heading.bottom
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 6
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.leftMargin: 4
        anchors.rightMargin: 4
        clip: contentHeight > height
        interactive: contentHeight > height
        boundsBehavior: Flickable.StopAtBounds
        activeFocusOnTab: true
        keyNavigationEnabled: true
        model: box.workspace.myTurn
        Accessible.role: Accessible.List
        Accessible.name: "내 차례"
        Keys.onReturnPressed: box.workspace.select(box.workspace.myTurn.keyAt(currentIndex))
        Keys.onEnterPressed: box.workspace.select(box.workspace.myTurn.keyAt(currentIndex))
        Keys.onSpacePressed: box.workspace.select(box.workspace.myTurn.keyAt(currentIndex))

        delegate: Item {
            id: row

            required property int index
            required property string key
            required property string title
            required property string alias
            required property string reason
            required property int sessionState

            width: ListView.view.width
            height: Theme.uiLine + Theme.secondaryLine + 6
            Accessible.role: Accessible.ListItem
            Accessible.name: title + ", " + alias + ", " + reason
            Accessible.onPressAction: box.workspace.select(key)

            Rectangle {
                anchors.fill: parent
                radius: Theme.radiusSmall
                color: hover.hovered ? Theme.hover : "transparent"

                FocusRing {
                    visible: list.activeFocus && row.ListView.isCurrentItem
                    gap: -2
                }
            }
            SessionMark {
                id: mark
                x: 8
                y: 3 + Math.round((Theme.uiLine - height) / 2)
                kind: row.sessionState
                Accessible.ignored: true
            }
            Label {
                id: name
                anchors.left: mark.right
                anchors.leftMargin: 8
                anchors.right: parent.right
                anchors.rightMargin: 8
                y: 3
                height: Theme.uiLine
                text: row.title
                Accessible.ignored: true
            }
            Label {
                anchors.left: name.left
                anchors.right: name.right
                anchors.top: name.bottom
                height: Theme.secondaryLine
                text: row.alias + " · " + row.reason
                font: Theme.meta
                color: Theme.text2
                Accessible.ignored: true
            }
            HoverHandler { id: hover }
            TapHandler {
                onTapped: {
                    list.currentIndex = row.index
                    box.workspace.select(row.key)
                }
            }
        }
    }
}
