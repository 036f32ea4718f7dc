import QtQuick
import Vesk.Controls

// One line of plain text; a longer one is cut with an ellipsis.
Text {
    color: Theme.text
    font: Theme.ui
    textFormat: Text.PlainText
    elide: Text.ElideRight
    verticalAlignment: Text.AlignVCenter
}
