import QtQuick
import QtQuick.Templates as T
import Vesk.Controls
import Vesk.Chat

// How full the conversation's context is. Always there; with little room it says less: the model's name goes first, then
// the sizes, then the bar.
T.Control {
    id: meter

    required property ComposerModel model
    property real room: 1000

    readonly property real barWidth: bar.implicitWidth + row.spacing + percent.implicitWidth
    readonly property real sizesWidth: barWidth + row.spacing + sizes.implicitWidth
    readonly property bool brief: sizesWidth + 8 > room

    implicitWidth: contentItem.implicitWidth + leftPadding + rightPadding
    leftPadding: 4
    rightPadding: 4
    focusPolicy: Qt.TabFocus
    Accessible.role: Accessible.StaticText
    Accessible.name: model.contextHelp

    contentItem: Row {
        id: row
        spacing: 6

        Label {
            anchors.verticalCenter: parent.verticalCenter
            visible: text.length > 0 && meter.sizesWidth + implicitWidth + row.spacing + 8 <= meter.room
            text: meter.model.contextModelText
            font: Theme.secondary
            color: Theme.text3
            Accessible.ignored: true
        }
        GaugeBar {
            id: bar
            anchors.verticalCenter: parent.verticalCenter
            implicitWidth: Theme.px(40)
            visible: meter.barWidth + 8 <= meter.room
            percent: meter.model.contextPercent
            label: "컨텍스트"
            Accessible.ignored: true
        }
        Label {
            id: percent
            anchors.verticalCenter: parent.verticalCenter
            visible: text.length > 0
            text: meter.model.contextPercentText
            font: Theme.secondaryBold
            color: Theme.gaugeColor(meter.model.contextPercent, false)
            Accessible.ignored: true
        }
        Label {
            anchors.verticalCenter: parent.verticalCenter
            visible: meter.brief && !percent.visible
            text: "?"
            font: Theme.secondary
            color: Theme.text3
            Accessible.ignored: true
        }
        Label {
            id: sizes
            anchors.verticalCenter: parent.verticalCenter
            visible: !meter.brief
            text: meter.model.contextSizeText
            font: Theme.secondary
            color: Theme.text3
            Accessible.ignored: true
        }
    }
    background: Item {
        FocusRing {
            visible: meter.visualFocus
            gap: -2
        }
    }
    HoverTip {
        wanted: meter.hovered || meter.visualFocus
        text: meter.model.contextHelp
    }
}
