import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Vesk.Controls
import Vesk.Chat

// One notice, which opens in place or leads to the audit log.
Bar {
    id: line

    required property int index
    required property int kind
    required property string text
    required property string detail
    required property bool expanded
    required property bool opensAuditLog

    signal activated()

    implicitHeight: head.height + (about.visible ? about.height : 0)

    T.AbstractButton {
        id: head
        width: parent.width
        implicitHeight: Theme.px(32)
        leftPadding: 16
        rightPadding: 12
        focusPolicy: Qt.TabFocus
        Accessible.role: Accessible.Button
        Accessible.name: line.text
        Accessible.description: line.opensAuditLog ? line.detail : line.expanded ? "접기" : "펼치기"
        onClicked: line.activated()

        Keys.onReturnPressed: head.clicked()
        Keys.onEnterPressed: head.clicked()

        background: Item {
            FocusRing {
                visible: head.visualFocus
                gap: -3
            }
        }
        contentItem: RowLayout {
            spacing: 8

            Icon {
                name: line.kind === NoticeList.ToolDenial ? "shield"
                    : line.kind === NoticeList.PermissionDrift ? "warning" : "info"
                size: 14
                color: line.kind === NoticeList.StreamSummary ? Theme.info : Theme.warning
            }
            Label {
                Layout.fillWidth: true
                text: line.text
                font: Theme.secondary
                Accessible.ignored: true
            }
            Icon {
                name: line.opensAuditLog ? "open-external" : line.expanded ? "chevron-up" : "chevron-down"
                size: 14
                color: Theme.text3
            }
        }

        HoverTip {
            control: head
            wanted: line.opensAuditLog && (head.hovered || head.visualFocus)
            text: line.detail
        }
    }
    Text {
        id: about
        anchors.top: head.bottom
        x: 38
        width: parent.width - x - 40
        visible: line.expanded && !line.opensAuditLog
        bottomPadding: 8
        text: line.detail
        textFormat: Text.PlainText
        font: Theme.secondary
        color: Theme.text2
        lineHeight: Theme.secondaryLine
        lineHeightMode: Text.FixedHeight
        wrapMode: Text.Wrap
    }
}
