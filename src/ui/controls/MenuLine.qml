import QtQuick
import QtQuick.Templates as T

// The line between groups of a menu.
T.MenuSeparator {
    implicitWidth: 40
    implicitHeight: 9
    contentItem: Item {
        Hairline {
            anchors.verticalCenter: parent.verticalCenter
            width: parent.width
        }
    }
}
