import QtQuick
import Vesk.Controls

// Why what stands in a field cannot be used, below it; without a reason it takes no room.
Label {
    property string tone: "danger"

    width: parent ? parent.width : implicitWidth
    visible: text.length > 0
    font: Theme.secondary
    color: tone === "danger" ? Theme.danger : Theme.warning
    lineHeight: Theme.secondaryLine
    lineHeightMode: Text.FixedHeight
    wrapMode: Text.Wrap
    elide: Text.ElideNone
    Accessible.role: Accessible.AlertMessage
    Accessible.name: text
}
