pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls

// What the lines of the graph mean.
Row {
    id: legend

    component Entry: Row {
        id: entry

        required property string text
        required property color ink
        property bool dashed: false

        spacing: 6

        Row {
            anchors.verticalCenter: parent.verticalCenter
            spacing: 4

            Repeater {
                model: entry.dashed ? 3 : 1

                Rectangle {
                    width: entry.dashed ? 4 : 20
                    height: entry.dashed ? 1 : 2
                    color: entry.ink
                }
            }
        }
        Label {
            anchors.verticalCenter: parent.verticalCenter
            text: entry.text
            font: Theme.meta
            color: Theme.text2
        }
    }

    spacing: 12

    Entry {
        text: "남은 선행"
        ink: Theme.warning
    }
    Entry {
        text: "풀림"
        ink: Theme.text2
        dashed: true
    }
    Entry {
        text: "순환"
        ink: Theme.danger
    }
}
