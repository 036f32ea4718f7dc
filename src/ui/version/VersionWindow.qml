pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Version

// The version control of one project.
Window {
    id: window

    required property VersionView view

    title: "형상관리 — " + view.alias
    minimumWidth: 900
    minimumHeight: 600
    color: Theme.canvas

    VersionPage {
        id: page
        anchors.fill: parent
        view: window.view
        focus: true
    }

    VersionKeys {
        enabled: !page.sheetShown
        view: window.view
        page: page
        onCloseTriggered: window.close()
    }
}
