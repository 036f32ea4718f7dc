import QtQuick
import QtQuick.Templates as T
import Vesk.Controls

// A short word on a soft ground. Tones: "", accent, success, warning, danger, info, wait.
T.Control {
    id: control

    required property string text
    property string iconName
    property string tone
    // An edge in place of the ground.
    property bool outlined: false
    property bool lit: false

    readonly property Tone toneColors: Tone { name: control.tone }

    implicitWidth: contentItem.implicitWidth + leftPadding + rightPadding
    implicitHeight: Theme.px(20)
    leftPadding: 8
    rightPadding: 8
    font: Theme.meta
    Accessible.role: Accessible.StaticText
    Accessible.name: text

    contentItem: Item {
        implicitWidth: words.x + words.implicitWidth
        implicitHeight: words.implicitHeight

        Icon {
            anchors.verticalCenter: parent.verticalCenter
            visible: control.iconName.length > 0
            name: control.iconName
            size: 12
            color: control.toneColors.ink
        }
        Label {
            id: words
            x: control.iconName.length > 0 ? Theme.px(12) + 4 : 0
            width: parent.width - x
            height: parent.height
            text: control.text
            font: control.font
            color: control.toneColors.ink
            Accessible.ignored: true
        }
    }

    background: Rectangle {
        radius: Theme.radius
        color: control.outlined ? (control.lit ? Theme.hover : "transparent") : control.toneColors.ground
        border.width: control.outlined || control.lit ? 1 : 0
        border.color: control.lit && !control.outlined ? control.toneColors.ink : Theme.line2
    }
}
