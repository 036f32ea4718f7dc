import QtQuick
import QtQuick.Layouts
import Vesk.Controls

// A notice at the lower right of a window. One that waits for the user stays until it is handled.
Item {
    id: toast

    required property string title
    property string text
    property string time
    property string actionText
    property string actionKeys
    property string iconName: "mark-finished"
    property color iconColor: Theme.success
    // Bears the amber edge and mark.
    property bool waits: false
    property int waitKind: SessionMarks.WaitApproval
    // Milliseconds until dismissed() without the pointer on it; 0 for never.
    property int lifetime: waits ? 0 : 6000

    signal actionTriggered()
    signal dismissed()

    implicitWidth: 360
    implicitHeight: Math.max(Theme.px(40), row.implicitHeight + 20)
    Accessible.role: Accessible.AlertMessage
    Accessible.name: text.length > 0 ? title + " " + text : title

    PopupFrame {
        anchors.fill: parent
        edge: toast.waits ? Theme.waitLine : Theme.line2
    }
    Rectangle {
        visible: toast.waits
        width: 4
        height: parent.height
        radius: 2
        color: Theme.waitFill
    }
    HoverHandler { id: pointer }
    Timer {
        interval: toast.lifetime
        running: toast.lifetime > 0 && toast.visible && !pointer.hovered
        onTriggered: toast.dismissed()
    }

    RowLayout {
        id: row
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        anchors.leftMargin: 16
        anchors.rightMargin: 6
        spacing: 10

        SessionMark {
            visible: toast.waits
            kind: toast.waitKind
        }
        Icon {
            visible: !toast.waits
            name: toast.iconName
            color: toast.iconColor
        }
        ColumnLayout {
            Layout.fillWidth: true
            spacing: 0

            Label {
                Layout.fillWidth: true
                text: toast.title
                font: Theme.uiBold
                Accessible.ignored: true
            }
            Label {
                Layout.fillWidth: true
                visible: text.length > 0
                text: toast.text
                font: Theme.secondary
                color: Theme.text2
                wrapMode: Text.Wrap
                maximumLineCount: 4
                Accessible.ignored: true
            }
        }
        Label {
            visible: text.length > 0
            text: toast.time
            font: Theme.meta
            color: Theme.text3
        }
        VButton {
            visible: toast.actionText.length > 0
            kind: toast.waits ? VButton.Primary : VButton.Plain
            text: toast.actionText
            keys: toast.actionKeys
            onClicked: toast.actionTriggered()
        }
        IconButton {
            side: 24
            iconSize: 12
            iconName: "close"
            text: "닫기"
            onClicked: toast.dismissed()
        }
    }
}
