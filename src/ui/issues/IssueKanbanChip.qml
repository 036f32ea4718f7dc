import QtQuick
import QtQuick.Templates as T
import Vesk.Controls

// A status to filter by. One that no issue has takes cards that are dragged onto it, and is no button.
T.AbstractButton {
    id: chip

    required property int index
    required property string word
    required property string label
    required property int status
    required property int count
    required property bool chosen
    required property bool vacant
    property bool dropTarget: false

    text: label
    enabled: !vacant
    implicitWidth: row.implicitWidth + (vacant ? 8 : 16)
    implicitHeight: Theme.px(24)
    focusPolicy: vacant ? Qt.NoFocus : Qt.StrongFocus
    Accessible.role: vacant ? Accessible.StaticText : Accessible.RadioButton
    Accessible.name: label + (vacant ? ", 비어 있음" : " " + count)
    Accessible.checked: chosen
    Keys.onReturnPressed: chip.clicked()
    Keys.onEnterPressed: chip.clicked()

    contentItem: Item {
        Row {
            id: row
            anchors.centerIn: parent
            spacing: 5

            StatusMark {
                anchors.verticalCenter: parent.verticalCenter
                visible: chip.status >= 0
                status: Math.max(0, chip.status)
                size: 12
            }
            Label {
                text: chip.vacant ? chip.label : chip.label + " " + chip.count
                font: Theme.secondary
                color: chip.chosen ? Theme.text : Theme.text2
                Accessible.ignored: true
            }
        }
    }
    background: Rectangle {
        radius: Theme.radius
        color: chip.dropTarget ? Theme.accentSoft : chip.chosen ? Theme.selected : chip.hovered ? Theme.hover
            : chip.vacant ? "transparent" : Theme.raised
        border.width: chip.dropTarget ? 2 : chip.vacant || chip.chosen ? 0 : 1
        border.color: chip.dropTarget ? Theme.accent : Theme.line2

        FocusRing { visible: chip.visualFocus }
    }
}
