pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Vesk.Controls
import Vesk.Chat

// A grid; one that is too wide scrolls sideways.
Column {
    id: table

    required property int columns
    required property var alignments
    required property var cells
    required property string dropped

    readonly property real widestCell: 320

    signal linkChosen(string link, string html)

    Flickable {
        id: flick
        width: Math.min(grid.implicitWidth + 2, table.width)
        height: grid.implicitHeight + 2 + (interactive ? 10 : 0)
        contentWidth: grid.implicitWidth + 2
        interactive: contentWidth > width
        flickableDirection: Flickable.HorizontalFlick
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        T.ScrollBar.horizontal: ScrollBar {}

        Rectangle {
            width: grid.implicitWidth + 2
            height: grid.implicitHeight + 2
            color: Theme.line2
        }
        GridLayout {
            id: grid
            x: 1
            y: 1
            columns: table.columns
            columnSpacing: 1
            rowSpacing: 1

            Repeater {
                model: table.cells

                Rectangle {
                    id: cell

                    required property int index
                    required property string modelData

                    Layout.fillWidth: true
                    Layout.fillHeight: true
                    implicitWidth: Math.min(Math.ceil(words.implicitWidth), table.widestCell) + 16
                    implicitHeight: words.height + 8
                    color: index < table.columns ? Theme.panel : Theme.canvas

                    Text {
                        id: words
                        x: 8
                        y: 4
                        width: cell.width - 16
                        text: MarkdownFormat.paragraph(cell.modelData, Theme.accent, Theme.hover, Theme.codeSmall,
                                                       Theme.uiLine)
                        textFormat: Text.RichText
                        font: cell.index < table.columns ? Theme.uiBold : Theme.ui
                        color: Theme.text
                        wrapMode: Text.Wrap
                        horizontalAlignment: table.alignments[cell.index % table.columns]
                        onLinkActivated: link => table.linkChosen(link, cell.modelData)
                    }
                }
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
