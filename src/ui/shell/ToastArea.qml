import QtQuick
import Vesk.Controls
import Vesk.Shell

// Where the toasts hang; nothing is read before there is one.
Lazy {
    id: area

    required property Attention attention
    required property ResumeView resume

    signal takenBack()

    wanted: attention.toasts.count > 0 || resume.trashedTitle.length > 0
    file: Qt.resolvedUrl("ToastStack.qml")
    properties: ({ attention: area.attention, resume: area.resume })

    Connections {
        target: area.item
        ignoreUnknownSignals: true
        function onTakenBack(): void { area.takenBack() }
    }
}
