pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Shell

// The sections. One tab stop; the arrows open.
FocusScope {
    id: nav

    required property Settings settings

    Rectangle {
        anchors.fill: parent
        radius: Theme.radius
        color: Theme.panel

        // Square where the page begins.
        Rectangle {
            anchors.right: parent.right
            width: Theme.radius
            height: parent.height
            color: Theme.panel
        }
    }
    Label {
        id: heading
        x: 18
        y: 14
        text: "설정"
        font: Theme.metaBold
        color: Theme.text2
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }
    ListView {
        id: list
        anchors.top: heading.bottom
        anchors.topMargin: 8
        anchors.bottom: parent.bottom
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.margins: 8
        focus: true
        activeFocusOnTab: true
        keyNavigationEnabled: true
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        model: nav.settings.sections
        currentIndex: nav.settings.section
        highlightMoveDuration: 0
        Accessible.role: Accessible.PageTabList
        Accessible.name: "설정"
        Keys.onUpPressed: nav.settings.section = Math.max(0, currentIndex - 1)
        Keys.onDownPressed: nav.settings.section = Math.min(count - 1, currentIndex + 1)
        Keys.onPressed: event => {
            event.accepted = event.key === Qt.Key_Home || event.key === Qt.Key_End
            if (event.accepted)
                nav.settings.section = event.key === Qt.Key_Home ? 0 : count - 1
        }

        delegate: Item {
            id: row

            required property int index
            required property string title
            required property string iconName

            width: ListView.view.width
            height: Theme.px(34)
            Accessible.role: Accessible.PageTab
            Accessible.name: title
            Accessible.selected: ListView.isCurrentItem
            Accessible.onPressAction: nav.settings.section = index

            Rectangle {
                anchors.fill: parent
                anchors.bottomMargin: 2
                radius: Theme.radius
                color: row.ListView.isCurrentItem ? Theme.selected : hover.hovered ? Theme.hover : "transparent"

                FocusRing {
                    visible: list.activeFocus && row.ListView.isCurrentItem
                    gap: -2
                }
            }
            Icon {
                id: sign
                x: 10
                anchors.verticalCenter: name.verticalCenter
                name: row.iconName
                color: row.ListView.isCurrentItem ? Theme.text : Theme.text2
            }
            Label {
                id: name
                anchors.left: sign.right
                anchors.leftMargin: 10
                anchors.right: parent.right
                anchors.rightMargin: 8
                height: parent.height - 2
                text: row.title
                Accessible.ignored: true
            }
            HoverHandler { id: hover }
            TapHandler {
                onTapped: {
                    list.forceActiveFocus(Qt.MouseFocusReason)
                    nav.settings.section = row.index
                }
            }
        }
    }
}
