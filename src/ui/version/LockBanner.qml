import QtQuick
import Vesk.Controls
import Vesk.Version

// Reading goes on beside a lock that somebody has left behind, but what is asked of a session would fail.
Banner {
    required property VersionView view

    visible: view.leftLock.length > 0
    tone: "warning"
    closable: false
    text: "잠금 파일이 남아 있어 git이 쓰지 못합니다"
    detail: view.leftLock
    actionText: "복사"
    onActionTriggered: view.copy(view.leftLock)
}
