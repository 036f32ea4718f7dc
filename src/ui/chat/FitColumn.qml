import QtQuick
import QtQuick.Templates as T
import Vesk.Controls

// A column that takes no more height than there is for it, then scrolls. What has the keyboard is brought into view.
Flickable {
    id: fit

    required property real room
    default property alias content: column.data

    readonly property Item keyboardItem: Window.activeFocusItem

    function reveal(item: Item): void {
        let above = item
        while (above && above !== column)
            above = above.parent
        if (!above)
            return
        const top = item.mapToItem(column, 0, 0).y
        contentY = Math.max(0, Math.min(top, Math.max(contentY, top + item.height - height)))
    }

    implicitHeight: Math.min(column.implicitHeight, Math.max(0, room))
    contentHeight: column.implicitHeight
    boundsBehavior: Flickable.StopAtBounds
    interactive: contentHeight > height
    clip: interactive
    T.ScrollBar.vertical: ScrollBar {}
    onKeyboardItemChanged: {
        if (interactive)
            reveal(keyboardItem)
    }

    Column {
        id: column
        width: fit.width
    }
}
