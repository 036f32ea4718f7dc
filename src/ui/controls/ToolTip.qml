import QtQuick
import QtQuick.Templates as T
import Vesk.Controls

// Help text; HoverTip makes one when it is needed.
T.ToolTip {
    id: control

    property string keys
    readonly property int longestLine: 320

    x: parent ? Math.round((parent.width - implicitWidth) / 2) : 0
    y: parent ? parent.height + 6 : 0
    margins: 8
    topPadding: 4
    bottomPadding: 4
    leftPadding: 8
    rightPadding: 8
    delay: 600
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent | T.Popup.CloseOnReleaseOutsideParent
    implicitWidth: contentItem.implicitWidth + leftPadding + rightPadding
    implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding

    contentItem: Row {
        spacing: 8

        Label {
            width: Math.min(implicitWidth, control.longestLine)
            text: control.text
            font: Theme.secondary
            lineHeight: Theme.secondaryLine
            lineHeightMode: Text.FixedHeight
            wrapMode: Text.Wrap
            elide: Text.ElideNone
        }
        Label {
            visible: control.keys.length > 0
            text: control.keys
            font: Theme.meta
            color: Theme.text3
            height: Theme.secondaryLine
        }
    }

    background: Rectangle {
        radius: Theme.radius
        color: Theme.raised
        border.color: Theme.line2
    }
}
