import QtQuick
import Vesk.Controls

// A session that can be asked, or the new one.
RadioButton {
    id: row

    required property var modelData
    property bool chosen: false

    readonly property var target: modelData

    signal picked()

    width: ListView.view.width
    text: target.running ? target.title + " — 실행 중" : target.title
    checked: chosen
    onClicked: picked()
}
