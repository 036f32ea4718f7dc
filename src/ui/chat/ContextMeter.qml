import QtQuick
import Vesk.Controls
import Vesk.Chat

// How full the conversation's context is.
Row {
    id: meter

    required property ComposerModel model

    spacing: 6
    Accessible.role: Accessible.StaticText
    Accessible.name: "컨텍스트 " + model.contextPercentText + " " + model.contextSizeText

    GaugeBar {
        anchors.verticalCenter: parent.verticalCenter
        width: Theme.px(40)
        percent: meter.model.contextPercent
        label: "컨텍스트"
        Accessible.ignored: true
    }
    Label {
        anchors.verticalCenter: parent.verticalCenter
        visible: text.length > 0
        text: meter.model.contextPercentText
        font: Theme.secondaryBold
        color: Theme.gaugeColor(meter.model.contextPercent, false)
        Accessible.ignored: true
    }
    Label {
        anchors.verticalCenter: parent.verticalCenter
        text: meter.model.contextSizeText
        font: Theme.secondary
        color: Theme.text3
        Accessible.ignored: true
    }
}
