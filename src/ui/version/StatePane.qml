import QtQuick
import Vesk.Controls
import Vesk.Version

// In place of the table: it is being read, or why there is none.
Item {
    id: pane

    required property VersionView view

    LoadingLine {
        anchors.centerIn: parent
        visible: pane.view.state === VersionView.Loading
        text: "저장소를 읽는 중"
        onCancelTriggered: pane.view.cancelLoading()
    }
    EmptyState {
        anchors.centerIn: parent
        visible: pane.view.state === VersionView.NoRepository
        text: pane.view.stateText
        actionText: "다시 보기"
        actionKeys: "F5"
        onActionTriggered: pane.view.reload()
    }
    ErrorState {
        anchors.centerIn: parent
        visible: pane.view.state === VersionView.NoGit || pane.view.state === VersionView.FolderGone
            || pane.view.state === VersionView.Unreadable
        text: pane.view.stateText
        onRetryTriggered: pane.view.reload()
        onCopyTriggered: pane.view.copy(text)
    }
}
