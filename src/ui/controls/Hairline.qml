import QtQuick
import Vesk.Controls

// One physical line between regions.
Rectangle {
    implicitWidth: 1
    implicitHeight: 1
    color: Theme.line
}
