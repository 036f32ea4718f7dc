import QtQuick
import QtQuick.Layouts
import Vesk.Controls
import Vesk.Shell

// The warning that the audit log cannot be written, across the whole window.
Rectangle {
    id: banner

    required property AuditView audit

    implicitHeight: Math.max(Theme.px(32), row.implicitHeight + 8)
    color: Theme.dangerSoft
    Accessible.role: Accessible.AlertMessage
    Accessible.name: title.text + " " + audit.failureDetail

    RowLayout {
        id: row
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.leftMargin: 12
        anchors.rightMargin: 4
        anchors.verticalCenter: parent.verticalCenter
        spacing: 8

        Icon {
            name: "warning"
            color: Theme.danger
            size: 14
        }
        Label {
            id: title
            text: "감사 기록이 디스크에 안 남고 있습니다"
            font: Theme.secondaryBold
            color: Theme.danger
            Accessible.ignored: true
        }
        Label {
            Layout.fillWidth: true
            text: banner.audit.failureDetail
            font: Theme.secondary
            color: Theme.text2
            wrapMode: Text.Wrap
            maximumLineCount: 3
            Accessible.ignored: true
        }
        VButton {
            Layout.preferredHeight: Theme.px(24)
            kind: VButton.Quiet
            text: "로그 위치 열기"
            font: Theme.secondary
            ink: Theme.danger
            onClicked: Desktop.showFolder(banner.audit.logPath)
        }
        IconButton {
            side: 24
            iconSize: 12
            iconName: "close"
            text: "닫기(새로 유실되면 다시 알림)"
            Accessible.name: "감사 기록 경고 닫기. 새로 유실되면 다시 알림"
            onClicked: banner.audit.dismissFailure()
        }
    }
}
