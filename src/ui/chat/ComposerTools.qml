import QtQuick
import Vesk.Controls
import Vesk.Chat

// Below the composer's text: attach, the three pickers, the context, stop and send. Where there is no room beside
// each other the latter have a row of their own, the pickers wrap, and the context says less.
Item {
    id: tools

    required property ComposerModel model
    readonly property Item firstItem: attach
    readonly property real choicesWidth: attach.implicitWidth + models.implicitWidth + efforts.implicitWidth
        + modes.implicitWidth + 3 * choices.spacing
    readonly property bool stacked: choicesWidth + actions.buttonsWidth + Theme.px(28) + 8 > width

    signal sendRequested()
    signal stopRequested()

    implicitHeight: stacked ? choices.height + 2 + actions.height : Math.max(choices.height, actions.height)

    Flow {
        id: choices
        y: tools.stacked ? 0 : Math.round((tools.height - height) / 2)
        width: tools.stacked ? tools.width : tools.width - actions.width - 8
        spacing: 2

        IconButton {
            id: attach
            iconName: "attach"
            text: "파일 첨부 — 로컬 경로를 에이전트에 전달 (⌘V 이미지 붙여넣기·드래그&드롭도 가능)"
            onClicked: dialog.setSource(Qt.resolvedUrl("AttachDialog.qml"), { attachments: tools.model.attachments })

            // The dialog brings its own style along; nothing of it is loaded before it is asked for.
            Loader {
                id: dialog
            }
        }
        Picker {
            id: models
            width: Math.min(implicitWidth, choices.width)
            picker: tools.model.models
            name: "모델"
        }
        Picker {
            id: efforts
            width: Math.min(implicitWidth, choices.width)
            picker: tools.model.efforts
            name: "추론 강도"
        }
        Picker {
            id: modes
            width: Math.min(implicitWidth, choices.width)
            picker: tools.model.modes
            name: "권한 모드"
            tint: Theme.modeColor(Math.max(0, picker.chosen))
            rowTints: Theme.modeColors
        }
    }
    Row {
        id: actions

        readonly property real buttonsWidth: send.width + (stop.visible ? stop.implicitWidth + spacing : 0)

        anchors.right: parent.right
        anchors.bottom: parent.bottom
        spacing: 6

        ContextMeter {
            height: parent.height
            room: tools.width - (tools.stacked ? 0 : tools.choicesWidth) - actions.buttonsWidth - 24
            model: tools.model
        }
        VButton {
            id: stop
            visible: tools.model.canStop
            kind: VButton.Destructive
            iconName: "stop"
            text: "Stop"
            ground: lit ? Theme.dangerSoft : "transparent"
            edge: Theme.danger
            tip: "세션 전체 종료 (Ctrl+.)"
            onClicked: tools.stopRequested()
        }
        IconButton {
            id: send
            width: Theme.px(34)
            iconName: "send"
            text: "보내기"
            keys: "Enter"
            primary: true
            enabled: tools.model.canSend
            onClicked: tools.sendRequested()
        }
    }
}
