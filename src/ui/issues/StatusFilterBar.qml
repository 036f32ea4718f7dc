pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Vesk.Controls
import Vesk.Issues

// A chip for each status that occurs, with how many issues have it.
Flow {
    id: bar

    required property IssueStatusFilter filter

    signal chosen(int chip)

    spacing: 4
    Accessible.role: Accessible.Grouping
    Accessible.name: "상태로 거르기"

    Repeater {
        model: bar.filter

        delegate: T.AbstractButton {
            id: chip

            required property int index
            required property int statusKind
            required property string word
            required property int count
            required property bool chosen

            // A word of the project's own has no shape of its own.
            readonly property bool worded: statusKind < 0 || statusKind === 6

            implicitWidth: row.implicitWidth + 14
            implicitHeight: Theme.px(24)
            focusPolicy: Qt.TabFocus
            Accessible.role: Accessible.CheckBox
            Accessible.name: word + " " + count + "건"
            Accessible.checked: chosen
            Keys.onReturnPressed: bar.chosen(index)
            Keys.onEnterPressed: bar.chosen(index)
            onClicked: bar.chosen(index)

            contentItem: Item {
                Row {
                    id: row
                    anchors.centerIn: parent
                    spacing: 4

                    StatusMark {
                        anchors.verticalCenter: parent.verticalCenter
                        visible: chip.statusKind >= 0
                        status: chip.statusKind
                        size: 12
                    }
                    Label {
                        anchors.verticalCenter: parent.verticalCenter
                        text: chip.worded ? chip.word + " " + chip.count : chip.count
                        font: Theme.meta
                        color: chip.chosen ? Theme.text : Theme.text2
                        Accessible.ignored: true
                    }
                }
            }
            background: Rectangle {
                radius: Theme.radius
                color: chip.chosen ? Theme.selected : chip.hovered ? Theme.hover : "transparent"
                border.width: chip.chosen ? 0 : 1
                border.color: Theme.line2

                FocusRing { visible: chip.visualFocus }
            }
            HoverTip {
                wanted: chip.hovered || chip.visualFocus
                text: chip.word
            }
        }
    }
}
