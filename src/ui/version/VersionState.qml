import QtQuick
import Vesk.Controls
import Vesk.Version

// What stands in place of the history while there is none to show.
Item {
    id: place

    required property VersionView view

    LoadingLine {
        anchors.centerIn: parent
        visible: place.view.state === VersionView.Loading
        text: "저장소를 읽는 중"
        onCancelTriggered: place.view.cancelLoading()
    }
    EmptyState {
        anchors.centerIn: parent
        visible: place.view.state === VersionView.NoRepository
        text: place.view.stateText
        actionText: "다시 보기"
        actionKeys: "F5"
        onActionTriggered: place.view.reload()
    }
    ErrorState {
        anchors.centerIn: parent
        visible: place.view.state === VersionView.NoGit || place.view.state === VersionView.FolderGone
            || place.view.state === VersionView.Unreadable
        text: place.view.stateText
        onRetryTriggered: place.view.reload()
        onCopyTriggered: place.view.copy(text)
    }
}
