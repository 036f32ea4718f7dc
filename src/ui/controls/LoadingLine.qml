import QtQuick
import Vesk.Controls

// What stands in a list that is being read. What is ready at once never shows it.
Item {
    id: loading

    required property string text
    property bool canCancel: true

    signal cancelTriggered()

    implicitWidth: row.implicitWidth
    implicitHeight: Theme.px(28)

    Timer {
        id: patience
        interval: 150
        running: loading.visible
        onTriggered: row.visible = true
    }

    Row {
        id: row
        visible: false
        height: parent.height
        spacing: 8

        RunningMark { anchors.verticalCenter: parent.verticalCenter }
        Label {
            anchors.verticalCenter: parent.verticalCenter
            text: loading.text
            color: Theme.text2
        }
        VButton {
            visible: loading.canCancel
            kind: VButton.Quiet
            text: "취소"
            onClicked: loading.cancelTriggered()
        }
    }
}
