import QtQuick
import Vesk.Controls
import Vesk.Shell

// How the window looks, what a run is asked for, and when the desktop is told.
Column {
    id: section

    required property Settings settings

    readonly property ViewSettings view: settings.view
    readonly property var themes: ["system", "light", "dark"]
    readonly property var languages: ["auto", "korean", "english", "japanese", "chinese"]

    spacing: 16

    SettingsTitle {
        width: parent.width
        title: "일반"
        about: "고르면 바로 적용됩니다."
    }
    SettingsCard {
        title: "화면"

        SettingsRow {
            title: "테마"
            ruled: false

            SegmentedControl {
                label: "테마"
                labels: ["시스템", "밝게", "어둡게"]
                currentIndex: section.themes.indexOf(section.view.theme)
                onActivated: index => section.view.theme = section.themes[index]
            }
        }
        SettingsRow {
            title: "글자 크기"

            Row {
                spacing: 4

                IconButton {
                    iconName: "minus"
                    text: "글자 작게"
                    keys: "Ctrl −"
                    enabled: section.view.textSize > 80
                    onClicked: section.view.shrinkText()
                }
                VButton {
                    width: Theme.px(64)
                    kind: VButton.Quiet
                    text: section.view.textSize + " %"
                    tip: "100 %로 되돌리기 (Ctrl 0)"
                    onClicked: section.view.resetText()
                }
                IconButton {
                    iconName: "plus"
                    text: "글자 크게"
                    keys: "Ctrl +"
                    enabled: section.view.textSize < 160
                    onClicked: section.view.enlargeText()
                }
            }
        }
    }
    SettingsCard {
        title: "세션"

        SettingsRow {
            title: "답변 언어"
            about: "다음에 시작하는 실행부터 적용됩니다"
            ruled: false

            SegmentedControl {
                label: "답변 언어"
                labels: ["자동", "한국어", "English", "日本語", "中文"]
                currentIndex: section.languages.indexOf(section.view.answerLanguage)
                onActivated: index => section.view.answerLanguage = section.languages[index]
            }
        }
        SettingsRow {
            title: "세션 실행 중 절전 방지"
            about: "화면은 꺼질 수 있습니다"

            Switch {
                text: "세션 실행 중 절전 방지"
                checked: section.view.keepAwake
                onToggled: section.view.keepAwake = checked
            }
        }
    }
    SettingsCard {
        title: "데스크톱 알림"

        SettingsRow {
            title: "내 차례 알림"
            about: "세션이 승인이나 답을 기다릴 때. 처리할 때까지 남습니다"
            ruled: false

            Switch {
                text: "내 차례 알림"
                checked: section.view.noticeMyTurn
                onToggled: section.view.noticeMyTurn = checked
            }
        }
        SettingsRow {
            title: "끝남 알림"
            about: "실행이 끝나거나 실패했을 때"

            Switch {
                text: "끝남 알림"
                checked: section.view.noticeFinished
                onToggled: section.view.noticeFinished = checked
            }
        }
    }
    Label {
        width: parent.width
        text: "알림은 Vesk 창이 앞에 있지 않을 때만 뜹니다."
        font: Theme.meta
        color: Theme.text2
    }
}
