import QtQuick
import Vesk.Controls
import Vesk.Shell

// The tab of one session.
Rectangle {
    id: tab

    required property int index
    required property string key
    required property string title
    required property string alias
    required property int sessionState
    required property string stateText
    required property bool unseen
    property bool current: false
    // Its pane is the one that the keys act on.
    property bool accented: true
    property bool ringed: false
    property real widest: 220

    signal selected()
    signal closed()
    signal menuRequested()
    signal dragBegun()
    signal dragged(point scenePoint)
    signal dropped()

    width: Math.min(widest, Math.max(Theme.px(120), mark.width + name.implicitWidth + closeButton.width + 38))
    color: current ? Theme.canvas : hover.hovered ? Theme.hover : "transparent"
    Accessible.role: Accessible.PageTab
    Accessible.name: title + ", " + alias + ", " + stateText
    Accessible.selected: current
    Accessible.onPressAction: selected()

    HoverHandler { id: hover }
    TapHandler { onTapped: tab.selected() }
    TapHandler {
        acceptedButtons: Qt.MiddleButton
        onTapped: tab.closed()
    }
    TapHandler {
        acceptedButtons: Qt.RightButton
        onTapped: tab.menuRequested()
    }
    DragHandler {
        target: null
        grabPermissions: PointerHandler.CanTakeOverFromAnything
        onActiveChanged: active ? tab.dragBegun() : tab.dropped()
        onCentroidChanged: {
            if (active)
                tab.dragged(centroid.scenePosition)
        }
    }

    Rectangle {
        width: parent.width
        height: 2
        visible: tab.current && tab.accented
        color: Theme.accent
    }
    Hairline {
        anchors.right: parent.right
        height: parent.height
    }
    // The line below the strip ends at the tab that is shown.
    Hairline {
        anchors.bottom: parent.bottom
        width: parent.width
        visible: !tab.current
    }
    FocusRing {
        visible: tab.ringed
        gap: -3
        parentRadius: 0
    }

    SessionMark {
        id: mark
        anchors.left: parent.left
        anchors.leftMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        kind: tab.sessionState
        Accessible.ignored: true
    }
    Label {
        id: name
        anchors.left: mark.right
        anchors.leftMargin: 8
        anchors.right: closeButton.left
        anchors.rightMargin: 4
        height: parent.height
        text: tab.title
        font: tab.unseen ? Theme.uiBold : Theme.ui
        color: tab.current || tab.unseen ? Theme.text : Theme.text2
        Accessible.ignored: true
    }
    IconButton {
        id: closeButton
        anchors.right: parent.right
        anchors.rightMargin: 6
        anchors.verticalCenter: parent.verticalCenter
        side: 24
        iconSize: 12
        iconName: "close"
        text: "세션 닫기"
        keys: "Ctrl W"
        focusPolicy: Qt.NoFocus
        onClicked: tab.closed()
    }
}
