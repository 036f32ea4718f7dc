import QtQuick
import QtQuick.Templates as T
import Vesk.Controls

// A tick with its words, for forms.
T.CheckBox {
    id: control

    implicitWidth: label.implicitWidth + leftPadding + rightPadding
    implicitHeight: Theme.px(28)
    leftPadding: indicator.width + 8
    spacing: 8
    font: Theme.ui
    focusPolicy: Qt.StrongFocus

    indicator: CheckMark {
        y: Math.round((control.height - height) / 2)
        checked: control.checked

        FocusRing {
            visible: control.visualFocus
            parentRadius: Theme.radiusSmall
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
