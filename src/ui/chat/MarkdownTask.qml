import QtQuick
import QtQuick.Templates as T
import Vesk.Controls
import Vesk.Chat

// A task of a list whose box can be ticked.
Item {
    id: item

    required property string html
    required property bool checked
    required property bool quoted

    readonly property alias textItem: words

    signal ticked()

    implicitHeight: words.height

    T.AbstractButton {
        id: box
        x: -width - 2
        y: Math.round((Theme.readingLine - height) / 2)
        width: mark.width + 8
        height: Theme.px(24)
        focusPolicy: Qt.StrongFocus
        Accessible.role: Accessible.CheckBox
        Accessible.name: MarkdownFormat.plainText(item.html)
        Accessible.checkable: true
        Accessible.checked: item.checked
        Keys.onReturnPressed: item.ticked()
        Keys.onEnterPressed: item.ticked()
        onClicked: item.ticked()

        CheckMark {
            id: mark
            anchors.centerIn: parent
            checked: item.checked

            FocusRing {
                visible: box.visualFocus
                parentRadius: Theme.radiusSmall
            }
        }
        HoverHandler { cursorShape: Qt.PointingHandCursor }
    }
    MarkdownText {
        id: words
        width: item.width
        html: item.html
        color: item.quoted || item.checked ? Theme.text2 : Theme.text
    }
}
