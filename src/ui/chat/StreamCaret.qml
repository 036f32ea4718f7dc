import QtQuick
import Vesk.Controls

// Stands still at the end of a text that is still coming.
Rectangle {
    objectName: "streamCaret"
    width: 7
    height: 16
    radius: 1
    color: Theme.accent
    Accessible.ignored: true
}
