pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Issues

// Where a field of an issue gets another value, with those that other issues have.
Popup {
    id: popup

    required property IssueDetail detail
    required property string name
    required property string value

    function write(value: string): void {
        close()
        detail.setField(name, value)
    }

    y: parent ? parent.height + 4 : 0
    focus: true

    contentItem: Column {
        spacing: 4

        TextField {
            id: field
            width: 260
            focus: true
            placeholderText: popup.name
            text: popup.value
            onSubmitted: popup.write(text)
            Component.onCompleted: selectAll()
        }
        Flow {
            width: 260
            spacing: 4
            visible: known.count > 0

            Repeater {
                id: known
                model: popup.detail.knownValues(popup.name)

                delegate: ChipButton {
                    required property string modelData

                    text: modelData
                    outlined: modelData !== popup.value
                    onClicked: popup.write(modelData)
                }
            }
        }
        Label {
            text: "Enter로 씁니다. 비우면 —가 됩니다."
            font: Theme.meta
            color: Theme.text3
        }
    }
}
