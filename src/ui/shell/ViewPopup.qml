pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Vesk.Controls
import Vesk.Shell

// The view's choices; each holds at once.
Popup {
    id: popup

    required property ViewSettings view

    readonly property var themes: ["system", "light", "dark"]
    readonly property var languages: ["auto", "korean", "english", "japanese", "chinese"]

    y: -height - 4
    padding: 16
    focus: true
    Component.onCompleted: open()

    contentItem: GridLayout {
        columns: 2
        columnSpacing: 16
        rowSpacing: 10

        Label { text: "테마" }
        SegmentedControl {
            Layout.alignment: Qt.AlignRight
            focus: true
            label: "테마"
            labels: ["시스템", "밝게", "어둡게"]
            currentIndex: popup.themes.indexOf(popup.view.theme)
            onActivated: index => popup.view.theme = popup.themes[index]
        }

        Label { text: "글자 크기" }
        RowLayout {
            Layout.alignment: Qt.AlignRight
            spacing: 4

            IconButton {
                iconName: "minus"
                text: "글자 작게"
                keys: "Ctrl −"
                enabled: popup.view.textSize > 80
                onClicked: popup.view.shrinkText()
            }
            VButton {
                Layout.preferredWidth: Theme.px(64)
                kind: VButton.Quiet
                text: popup.view.textSize + " %"
                tip: "100 %로 되돌리기 (Ctrl 0)"
                onClicked: popup.view.resetText()
            }
            IconButton {
                iconName: "plus"
                text: "글자 크게"
                keys: "Ctrl +"
                enabled: popup.view.textSize < 160
                onClicked: popup.view.enlargeText()
            }
        }

        Label { text: "세션 실행 중 절전 방지" }
        Switch {
            Layout.alignment: Qt.AlignRight
            text: "세션 실행 중 절전 방지"
            checked: popup.view.keepAwake
            onToggled: popup.view.keepAwake = checked
        }

        Label {
            Layout.columnSpan: 2
            text: "답변 언어"
        }
        SegmentedControl {
            Layout.columnSpan: 2
            Layout.fillWidth: true
            label: "답변 언어"
            labels: ["자동", "한국어", "English", "日本語", "中文"]
            currentIndex: popup.languages.indexOf(popup.view.answerLanguage)
            onActivated: index => popup.view.answerLanguage = popup.languages[index]
        }
        Label {
            Layout.columnSpan: 2
            text: "다음에 시작하는 실행부터 적용됩니다"
            font: Theme.meta
            color: Theme.text3
        }
    }
}
