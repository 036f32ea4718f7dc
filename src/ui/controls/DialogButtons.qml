import QtQuick

// The buttons of a dialog, at its lower right.
Item {
    default property alias buttons: row.data

    implicitWidth: row.implicitWidth + 40
    implicitHeight: row.implicitHeight + 36

    Row {
        id: row
        anchors.right: parent.right
        anchors.rightMargin: 20
        y: 16
        spacing: 8
    }
}
