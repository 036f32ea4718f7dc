pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Shell

// Where the files lie.
Column {
    id: section

    required property Settings settings

    spacing: 16

    SettingsTitle {
        width: parent.width
        title: "파일 위치"
        about: "Vesk가 쓰는 파일입니다. 대화는 claude가 보관하며 Vesk는 고치지 않습니다."
    }
    SettingsCard {
        title: "파일 위치"

        Repeater {
            model: section.settings.places

            delegate: SettingsRow {
                id: place

                required property int index
                required property string name
                required property string path
                required property string shownPath

                title: name
                about: shownPath
                ruled: index > 0

                Row {
                    spacing: 4

                    IconButton {
                        iconName: "copy"
                        text: place.name + " 경로 복사"
                        onClicked: Desktop.copyText(place.path)
                    }
                    VButton {
                        text: "폴더 열기"
                        Accessible.name: place.name + " 폴더 열기"
                        onClicked: Desktop.showFolder(place.path)
                    }
                }
            }
        }
    }
}
