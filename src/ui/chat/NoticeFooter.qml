pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Chat

// The notices of the last run, a line each.
Column {
    id: footer

    required property NoticeList notices

    signal openAuditLog()

    visible: list.count > 0

    Repeater {
        id: list
        model: footer.notices

        NoticeLine {
            width: footer.width
            onActivated: opensAuditLog ? footer.openAuditLog() : footer.notices.toggle(index)
        }
    }
}
