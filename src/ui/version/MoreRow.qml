import QtQuick
import Vesk.Controls

// The end of what is shown, and the way to more of it.
Item {
    id: row

    required property string text
    required property bool loading

    signal triggered()

    implicitHeight: Theme.px(40)
    height: implicitHeight

    Row {
        anchors.centerIn: parent
        spacing: 12

        Label {
            anchors.verticalCenter: parent.verticalCenter
            text: row.text
            font: Theme.secondary
            color: Theme.text3
        }
        RunningMark {
            anchors.verticalCenter: parent.verticalCenter
            visible: row.loading
        }
        VButton {
            text: "더 보기"
            enabled: !row.loading
            onClicked: row.triggered()
        }
    }
}
