pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Chat

// Where the open request stands, between the timeline and the bars; nothing when nobody asks.
Column {
    id: area

    required property ChatViewModel view
    required property real paneHeight
    // What is left of that for the request.
    required property real space

    readonly property real room: paneHeight * 0.4

    signal answered()

    visible: view.permission.isOpen || view.questions.isOpen
    leftPadding: 12
    rightPadding: 12
    bottomPadding: 12

    Repeater {
        model: area.view.permission.isOpen ? 1 : 0

        PermissionPrompt {
            width: area.width - 24
            card: area.view.permission
            detailRoom: area.room
            space: area.space - area.bottomPadding
            onAnswered: area.answered()
        }
    }
    Repeater {
        model: area.view.questions.isOpen ? 1 : 0

        QuestionPrompt {
            width: area.width - 24
            form: area.view.questions
            questionRoom: area.room + 80
            space: area.space - area.bottomPadding
            onAnswered: area.answered()
        }
    }
}
