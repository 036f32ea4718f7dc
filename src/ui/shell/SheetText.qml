import QtQuick
import Vesk.Controls
import Vesk.Shell

// A paragraph in a sheet.
Label {
    width: parent ? parent.width : implicitWidth
    color: Theme.text2
    lineHeight: Theme.uiLine
    lineHeightMode: Text.FixedHeight
    wrapMode: Text.Wrap
    elide: Text.ElideNone
}
