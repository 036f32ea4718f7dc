import QtQuick
import QtQuick.Layouts
import Vesk.Controls

// News that concerns a whole region, in a line of its own below the header.
Rectangle {
    id: banner

    required property string text
    property string detail
    property string tone: "info"
    property string iconName: toneColors.iconName
    property string actionText
    property bool closable: true
    // As many lines as the text takes; else one, cut at its end.
    property bool wraps: false

    readonly property Tone toneColors: Tone { name: banner.tone }

    signal actionTriggered()
    signal closed()

    implicitWidth: 400
    implicitHeight: wraps ? Math.max(Theme.px(32), words.implicitHeight + 12) : Theme.px(32)
    color: toneColors.ground
    Accessible.role: Accessible.AlertMessage
    Accessible.name: detail.length > 0 ? text + " " + detail : text

    RowLayout {
        anchors.fill: parent
        anchors.leftMargin: 12
        anchors.rightMargin: 4
        spacing: 8

        Icon {
            name: banner.iconName
            color: banner.toneColors.ink
            size: 14
        }
        Label {
            id: words
            Layout.fillWidth: banner.detail.length === 0
            Layout.maximumWidth: Math.ceil(implicitWidth) + 1
            text: banner.text
            font: banner.detail.length > 0 ? Theme.secondaryBold : Theme.secondary
            color: banner.toneColors.ink
            wrapMode: banner.wraps ? Text.Wrap : Text.NoWrap
            elide: banner.wraps ? Text.ElideNone : Text.ElideRight
            Accessible.ignored: true
        }
        Label {
            Layout.fillWidth: true
            visible: banner.detail.length > 0
            text: banner.detail
            font: Theme.secondary
            color: Theme.text2
            Accessible.ignored: true
        }
        Item {
            Layout.fillWidth: banner.detail.length === 0
        }
        VButton {
            Layout.preferredHeight: Theme.px(24)
            visible: banner.actionText.length > 0
            kind: VButton.Quiet
            text: banner.actionText
            font: Theme.secondary
            ink: banner.toneColors.ink
            onClicked: banner.actionTriggered()
        }
        IconButton {
            visible: banner.closable
            side: 24
            iconSize: 12
            iconName: "close"
            text: "닫기"
            onClicked: banner.closed()
        }
    }
}
