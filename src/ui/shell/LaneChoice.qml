pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Vesk.Controls
import Vesk.Shell

// The eight project colours. One tab stop: arrows choose.
T.Control {
    id: choice

    property int lane: 0

    signal chosen(int lane)

    implicitWidth: row.implicitWidth + leftPadding + rightPadding
    implicitHeight: Theme.px(28)
    leftPadding: 6
    rightPadding: 6
    focusPolicy: Qt.StrongFocus
    Accessible.role: Accessible.Grouping
    Accessible.name: "프로젝트 색 " + (lane + 1) + "번"

    Keys.onLeftPressed: chosen((lane + 7) % 8)
    Keys.onRightPressed: chosen((lane + 1) % 8)

    contentItem: Row {
        id: row

        Repeater {
            model: 8

            delegate: T.AbstractButton {
                id: swatch

                required property int index

                width: Theme.px(24)
                height: row.height
                focusPolicy: Qt.NoFocus
                Accessible.role: Accessible.RadioButton
                Accessible.name: "색 " + (index + 1) + "번"
                Accessible.checked: index === choice.lane
                onClicked: choice.chosen(index)

                Rectangle {
                    anchors.centerIn: parent
                    width: Theme.px(14)
                    height: width
                    radius: Theme.radiusSmall
                    color: Theme.lane(swatch.index)
                }
                Rectangle {
                    anchors.centerIn: parent
                    width: Theme.px(20)
                    height: width
                    radius: Theme.radius
                    visible: swatch.index === choice.lane || swatch.hovered
                    color: "transparent"
                    border.width: swatch.index === choice.lane ? 2 : 1
                    border.color: swatch.index === choice.lane ? Theme.text : Theme.lineCtl
                }
            }
        }
    }
    background: Item {
        FocusRing { visible: choice.visualFocus }
    }
}
