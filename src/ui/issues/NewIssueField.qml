pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Issues

// A field of a new issue: typed, or chosen from what other issues have.
Column {
    id: field

    required property string name
    required property NewIssueForm form

    FieldLabel { text: field.name }
    TextField {
        id: edit
        width: parent.width
        rightPadding: Theme.px(28)
        placeholderText: "—"
        text: field.form.value(field.name)
        Accessible.name: field.name
        onTextEdited: field.form.setValue(field.name, text)
        Keys.onDownPressed: event => {
            event.accepted = choices.count > 0 && !composing
            if (event.accepted) {
                edit.openChoices()
                menu.currentIndex = 0
            }
        }

        function openChoices(): void { menu.popup(edit, 0, edit.height + 4) }

        IconButton {
            id: arrow
            anchors.right: parent.right
            anchors.rightMargin: 2
            anchors.verticalCenter: parent.verticalCenter
            visible: choices.count > 0
            side: 24
            iconSize: 12
            iconName: "chevron-down"
            text: field.name + " 고르기"
            focusPolicy: Qt.NoFocus
            keys: "↓"
            onClicked: edit.openChoices()
        }
    }
    Menu {
        id: menu

        Instantiator {
            id: choices
            model: field.form.choices(field.name)

            MenuRow {
                required property string modelData

                text: modelData
                checkable: true
                checked: modelData === edit.text
                onTriggered: {
                    edit.text = modelData
                    field.form.setValue(field.name, modelData)
                }
            }
            onObjectAdded: (index, object) => menu.insertItem(index, object)
            onObjectRemoved: (index, object) => menu.removeItem(object)
        }
    }
}
