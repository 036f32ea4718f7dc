import QtQuick
import Vesk.Controls
import Vesk.Shell

// Why the projects are not there.
ErrorState {
    required property Projects projects

    canRetry: false
    text: "프로젝트 목록을 읽지 못했습니다\n" + projects.loadError + "\n" + projects.catalogPath
    onCopyTriggered: Desktop.copyText(text)
}
