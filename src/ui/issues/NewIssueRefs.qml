pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Issues

// The relations of a new issue; a press on one takes it away.
Column {
    id: refs

    required property string title
    required property bool waitsFor
    required property IssueRefRows rows
    required property NewIssueForm form

    FieldLabel { text: refs.title }
    Flow {
        width: parent.width
        spacing: 6

        Repeater {
            model: refs.rows

            delegate: ChipButton {
                required property int index
                required property string issueId
                required property string title

                text: issueId
                iconName: "close"
                tip: title + " — 누르면 뺍니다"
                onClicked: refs.form.removeRef(refs.waitsFor, index)
            }
        }
        VButton {
            id: plus
            implicitHeight: Theme.px(24)
            kind: VButton.Quiet
            iconName: "plus"
            text: "이슈"
            Accessible.name: refs.title + " 더하기"
            onClicked: picker.setSource(Qt.resolvedUrl("IssueRefPicker.qml"), {
                parent: plus, view: refs.form.view, without: refs.form.chosenIds, x: 0, visible: true })
        }
        Loader { id: picker }
        Connections {
            target: picker.item as IssueRefPicker
            function onChosen(id: string): void { refs.form.addRef(refs.waitsFor, id) }
            function onClosed(): void { picker.source = "" }
        }
    }
}
