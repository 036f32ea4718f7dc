import QtQuick
import Vesk.Controls

// A paragraph in a sheet.
Label {
    width: parent ? parent.width : implicitWidth
    color: Theme.text2
    lineHeight: Theme.uiLine
    lineHeightMode: Text.FixedHeight
    wrapMode: Text.Wrap
    elide: Text.ElideNone
}
