pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Shell

// The newest entries of the audit log.
Dialog {
    id: sheet

    required property AuditView audit

    title: "최근 기록"
    implicitWidth: 820
    implicitHeight: 560

    contentItem: Rectangle {
        radius: Theme.radius
        color: Theme.well
        border.color: list.activeFocus ? Theme.accent : Theme.line

        ListView {
            id: list
            anchors.fill: parent
            focus: true
            anchors.margins: 8
            clip: true
            boundsBehavior: Flickable.StopAtBounds
            activeFocusOnTab: true
            keyNavigationEnabled: true
            model: sheet.audit.entries
            Accessible.role: Accessible.List
            Accessible.name: "최근 기록"
            Keys.onPressed: event => {
                event.accepted = event.key === Qt.Key_Home || event.key === Qt.Key_End
                if (event.accepted)
                    currentIndex = event.key === Qt.Key_Home ? 0 : count - 1
            }

            delegate: AuditRow {
                ringed: list.activeFocus && ListView.isCurrentItem
                onPicked: list.currentIndex = index
            }
        }
        ScrollBar {
            anchors.top: list.top
            anchors.bottom: list.bottom
            anchors.right: parent.right
            orientation: Qt.Vertical
            size: list.visibleArea.heightRatio
            position: list.visibleArea.yPosition
            onPositionChanged: {
                if (pressed)
                    list.contentY = list.originY + position * list.contentHeight
            }
        }
        Label {
            anchors.centerIn: parent
            visible: list.count === 0
            text: "아직 기록이 없습니다"
            color: Theme.text2
        }
    }
    footer: DialogButtons {
        VButton {
            kind: VButton.Quiet
            text: "로그 위치 열기"
            iconName: "folder"
            onClicked: Desktop.showFolder(sheet.audit.logPath)
        }
        VButton {
            text: "닫기"
            onClicked: sheet.close()
        }
    }
}
