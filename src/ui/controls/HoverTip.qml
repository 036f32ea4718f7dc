import QtQuick
import QtQuick.Templates as T

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
    // Who presses it knows; and what opens below it is not to be covered.
    Connections {
        target: tip.shown ? tip.control as T.AbstractButton : null
        function onPressed(): void { tip.source = "" }
        function onClicked(): void { tip.source = "" }
    }
}
