import QtQuick

// Help for the control that it stands in, made only while the pointer or the keyboard is on that.
Loader {
    id: tip

    property Item control: parent
    property bool wanted: false
    property string text
    property string keys

    readonly property bool shown: wanted && text.length > 0

    // By address: a component written here could not see this file's ids.
    onShownChanged: {
        if (shown)
            setSource(Qt.resolvedUrl("ToolTip.qml"), {parent: control, text: text, keys: keys, visible: true})
        else
            source = ""
    }
    onTextChanged: {
        if (item)
            (item as ToolTip).text = text
    }
}
