import QtQuick
import Vesk.Controls
import Vesk.Version

// HEAD filled, a branch edged in its lane, a remote one with a broken edge, a tag grey.
Item {
    id: chip

    required property string name
    required property int kind
    required property int lane
    property real widest: Theme.px(234)

    readonly property bool isHead: kind === RefKind.Head
    readonly property bool hasDot: kind === RefKind.Branch || kind === RefKind.Remote
    readonly property color laneColor: Theme.lane(lane)

    // An elided name is narrower than what it was given.
    implicitWidth: Math.ceil(words.x + Math.min(words.width, words.contentWidth) + 7)
    implicitHeight: Theme.px(18)
    Accessible.ignored: true

    DashedEdge {
        anchors.fill: parent
        fill: chip.isHead ? Theme.accentFill : Theme.canvas
        edge: chip.isHead ? Theme.accentFill : chip.hasDot ? chip.laneColor : Theme.lineCtl
        dashed: chip.kind === RefKind.Remote
        radius: Theme.radiusSmall
    }
    Rectangle {
        id: dot
        x: 7
        anchors.verticalCenter: parent.verticalCenter
        visible: chip.hasDot
        width: Theme.px(6)
        height: width
        radius: width / 2
        color: chip.laneColor
    }
    Label {
        id: words
        x: chip.hasDot ? dot.x + dot.width + 4 : 7
        width: Math.max(0, Math.min(implicitWidth, chip.widest - x - 7))
        height: parent.height
        text: chip.name
        font: chip.isHead ? Theme.metaBold : Theme.codeSmall
        color: chip.isHead ? Theme.onAccent : chip.hasDot ? Theme.text : Theme.text2
        elide: Text.ElideMiddle
    }
}
