import QtQuick
import Vesk.Controls

// A changed file: letter, name, folder.
Item {
    id: row

    required property string path
    required property string name
    required property string folder
    required property string badge
    required property string kindLabel
    required property string stage
    required property string tone
    required property bool conflict
    property bool current: false
    property bool ringed: false

    readonly property Tone toneColors: Tone { name: row.tone }

    signal picked()
    signal menuRequested(real x, real y)

    // By keyboard.
    function openMenu(): void { menuRequested(24, height) }

    width: ListView.view.width
    Accessible.role: Accessible.ListItem
    Accessible.name: name + ", " + kindLabel + (folder.length > 0 ? ", " + folder : "")
        + (stage.length > 0 && !conflict ? ", " + stage : "")
    Accessible.selected: current
    Accessible.onPressAction: picked()

    HoverHandler { id: hover }
    TapHandler { onTapped: row.picked() }
    TapHandler {
        acceptedButtons: Qt.RightButton
        onTapped: eventPoint => row.menuRequested(eventPoint.position.x, eventPoint.position.y)
    }

    Rectangle {
        anchors.fill: parent
        color: row.current ? Theme.selected : hover.hovered ? Theme.hover : "transparent"

        FocusRing {
            visible: row.ringed
            gap: -2
            parentRadius: 0
        }
    }
    Rectangle {
        id: letter
        x: 12
        anchors.verticalCenter: parent.verticalCenter
        width: Theme.px(16)
        height: Theme.px(16)
        radius: Theme.radiusSmall
        color: row.toneColors.ground

        Label {
            anchors.centerIn: parent
            text: row.badge
            font: Theme.metaBold
            color: row.toneColors.ink
            Accessible.ignored: true
        }
    }
    Label {
        id: title
        anchors.left: letter.right
        anchors.leftMargin: 8
        width: Math.min(implicitWidth, row.width - x - 10 - (end.visible ? end.width + 6 : 0))
        height: parent.height
        text: row.name
        elide: Text.ElideMiddle
        Accessible.ignored: true
    }
    Label {
        anchors.left: title.right
        anchors.leftMargin: 6
        anchors.right: end.visible ? end.left : parent.right
        anchors.rightMargin: end.visible ? 6 : 10
        height: parent.height
        text: row.folder
        font: Theme.secondary
        color: Theme.text3
        elide: Text.ElideLeft
        horizontalAlignment: Text.AlignLeft
        Accessible.ignored: true
    }
    Label {
        id: end
        anchors.right: parent.right
        anchors.rightMargin: 12
        height: parent.height
        visible: text.length > 0
        text: row.stage
        font: row.conflict ? Theme.secondaryBold : Theme.meta
        color: row.conflict ? Theme.warning : Theme.text3
        Accessible.ignored: true
    }
    HoverTip {
        control: row
        wanted: hover.hovered && !row.current
        text: row.kindLabel + " · " + (row.folder.length > 0 ? row.folder + "/" : "") + row.name
    }
}
