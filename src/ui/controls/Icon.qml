import QtQuick
import Vesk.Controls

// A drawing of the icon set in one colour, crisp at every device pixel ratio.
Image {
    id: icon

    required property string name
    property color color: Theme.text2
    // Before the text size is applied.
    property real size: 16

    readonly property int pixels: Theme.px(size)

    width: pixels
    height: pixels
    sourceSize.width: pixels
    sourceSize.height: pixels
    source: name.length > 0 ? "image://icon/" + name + "?" + String(color).slice(1) : ""
    Accessible.ignored: true
}
