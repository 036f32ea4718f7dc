import QtQuick
import Vesk.Controls
import Vesk.Shell

// One entry of the audit log, whole: an error's text is what it is read for.
Item {
    id: row

    required property int index
    required property string kind
    required property string time
    required property string summary
    required property bool isError
    property bool ringed: false

    signal picked()

    width: ListView.view.width - 12
    height: text.height + 6
    Accessible.role: Accessible.ListItem
    Accessible.name: time + ", " + kind + ", " + summary

    Rectangle {
        anchors.fill: parent
        radius: Theme.radiusSmall
        color: row.ringed ? Theme.hover : "transparent"
    }
    Label {
        id: when
        x: 6
        y: 3
        height: Theme.codeSmallLine
        width: Theme.px(110)
        text: row.time
        font: Theme.codeSmall
        color: Theme.text3
        Accessible.ignored: true
    }
    Label {
        id: what
        anchors.left: when.right
        anchors.leftMargin: 8
        y: 3
        height: Theme.codeSmallLine
        width: Theme.px(140)
        text: row.kind
        font: Theme.codeSmall
        color: row.isError ? Theme.danger : Theme.text2
        Accessible.ignored: true
    }
    TextEdit {
        id: text
        anchors.left: what.right
        anchors.leftMargin: 8
        anchors.right: parent.right
        anchors.rightMargin: 6
        y: 3
        text: row.summary
        textFormat: TextEdit.PlainText
        font: Theme.codeSmall
        color: Theme.text
        selectionColor: Theme.selected
        selectedTextColor: Theme.text
        wrapMode: TextEdit.WrapAnywhere
        readOnly: true
        selectByMouse: true
        activeFocusOnPress: false
        Accessible.ignored: true
    }
    TapHandler { onTapped: row.picked() }
}
