import QtQuick
import QtQuick.Templates as T
import Vesk.Controls

// One of several choices with its words, for forms.
T.RadioButton {
    id: control

    implicitWidth: label.implicitWidth + leftPadding + rightPadding
    implicitHeight: Theme.px(28)
    leftPadding: indicator.width + 8
    spacing: 8
    font: Theme.ui
    focusPolicy: Qt.StrongFocus

    indicator: RadioMark {
        y: Math.round((control.height - height) / 2)
        checked: control.checked

        FocusRing {
            visible: control.visualFocus
            parentRadius: parent.radius
        }
    }
    contentItem: Label {
        id: label
        text: control.text
        font: control.font
        color: control.enabled ? Theme.text : Theme.textOff
        Accessible.ignored: true
    }
}
