import QtQuick
import Vesk.Controls

// The colour of a project; its name always stands beside it.
Rectangle {
    implicitWidth: Theme.px(8)
    implicitHeight: Theme.px(8)
    radius: 2
    color: Theme.lane(0)
    Accessible.ignored: true
}
