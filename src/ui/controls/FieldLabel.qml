import QtQuick
import Vesk.Controls

// The word above a field of a form.
Label {
    topPadding: 8
    font: Theme.secondary
    color: Theme.text2
}
