import QtQuick
import Vesk.Controls
import Vesk.Version

// What of the repository could not be read; git's own words can be taken along whole.
Banner {
    required property VersionView view

    visible: text.length > 0
    tone: "danger"
    closable: false
    text: view.faultBanner
    detail: view.faultDetail
    actionText: "복사"
    onActionTriggered: view.copy(view.faultText)
}
