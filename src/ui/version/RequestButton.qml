import QtQuick
import Vesk.Controls

// A request, dead while there is nothing to ask for; then it says why.
FocusScope {
    id: request

    required property string text
    required property string iconName
    property string reason

    signal clicked()

    implicitHeight: button.implicitHeight

    VButton {
        id: button
        anchors.fill: parent
        focus: true
        text: request.text
        iconName: request.iconName
        enabled: request.reason.length === 0
        Accessible.description: request.reason
        onClicked: request.clicked()
    }
    HoverHandler { id: hover }
    HoverTip {
        control: request
        wanted: hover.hovered
        text: request.reason
    }
}
