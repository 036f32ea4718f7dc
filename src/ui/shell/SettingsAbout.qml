import QtQuick
import Vesk.Controls
import Vesk.Shell

// What is running.
Column {
    id: section

    required property Settings settings

    spacing: 16

    SettingsTitle {
        width: parent.width
        title: "Vesk 정보"
    }
    SettingsCard {
        title: "Vesk 정보"

        SettingsRow {
            title: "Vesk"
            ruled: false

            Label {
                text: section.settings.version
                font: Theme.codeSmall
                color: Theme.text2
            }
        }
        SettingsRow {
            title: "Qt"

            Label {
                text: section.settings.qtVersion
                font: Theme.codeSmall
                color: Theme.text2
            }
        }
        SettingsRow {
            title: "에이전트 프로그램"
            about: section.settings.agentPath.length > 0 ? section.settings.agentPath : "찾지 못했습니다"
        }
    }
}
