pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Vesk.Controls
import Vesk.Chat

// A grid; one that is too wide or too high scrolls in itself, and only the cells that are seen exist.
Column {
    id: table

    required property int columns
    required property var alignments
    required property var cells
    required property string dropped

    readonly property Item textItem: null
    readonly property real highest: Theme.px(560)

    signal linkChosen(string link, string html)

    Rectangle {
        width: Math.min(grid.cellsModel.wholeWidth, table.width)
        height: Math.min(grid.cellsModel.wholeHeight, table.highest) + (wide ? 10 : 0)
        color: Theme.line2

        readonly property bool wide: grid.cellsModel.wholeWidth > table.width

        Rectangle {
            visible: parent.wide
            anchors.bottom: parent.bottom
            width: parent.width
            height: 10
            color: Theme.canvas
        }
        TableView {
            id: grid

            readonly property MarkdownCells cellsModel: MarkdownCells {
                columns: table.columns
                alignments: table.alignments
                cells: table.cells
                font: Theme.ui
                lineHeight: Theme.uiLine
            }

            x: 1
            y: 1
            width: parent.width - 2
            height: parent.height - (parent.wide ? 11 : 2)
            model: cellsModel
            columnSpacing: 1
            rowSpacing: 1
            columnWidthProvider: column => cellsModel.columnWidth(column)
            rowHeightProvider: row => cellsModel.rowHeight(row)
            reuseItems: false
            interactive: contentWidth > width || contentHeight > height
            boundsBehavior: Flickable.StopAtBounds
            clip: interactive
            T.ScrollBar.horizontal: ScrollBar {
                parent: grid.parent
                anchors.bottom: parent.bottom
                width: parent.width
            }
            T.ScrollBar.vertical: ScrollBar {}

            delegate: MarkdownCell {
                onLinkChosen: (link, html) => table.linkChosen(link, html)
            }
        }
    }
    Label {
        visible: text.length > 0
        topPadding: 4
        text: table.dropped
        font: Theme.secondary
        color: Theme.text3
    }
}
