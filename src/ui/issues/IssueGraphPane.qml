import QtQuick
import Vesk.Controls
import Vesk.Issues

// Who waits for whom. Arrows go along the links, Enter opens, + − 0 zoom, Esc lets the chain go.
FocusScope {
    id: pane

    required property IssuesView view

    function act(key: int): bool {
        switch (key) {
        case Qt.Key_Left: graph.step(IssueGraphModel.Left); return true
        case Qt.Key_Right: graph.step(IssueGraphModel.Right); return true
        case Qt.Key_Up: graph.step(IssueGraphModel.Up); return true
        case Qt.Key_Down: graph.step(IssueGraphModel.Down); return true
        case Qt.Key_Return:
        case Qt.Key_Enter: graph.openFocused(); return true
        case Qt.Key_Escape:
            if (graph.focusKey.length === 0)
                return false
            graph.clearFocus()
            return true
        default: return false
        }
    }
    function zoom(key: int): bool {
        switch (key) {
        case Qt.Key_Plus:
        case Qt.Key_Equal: graph.stage.zoomIn(); return true
        case Qt.Key_Minus: graph.stage.zoomOut(); return true
        case Qt.Key_0: graph.stage.fit(); return true
        default: return false
        }
    }
    function isPlain(modifiers: int): bool {
        return (modifiers & ~(Qt.ShiftModifier | Qt.KeypadModifier)) === Qt.NoModifier
    }

    // From the toolbar, too.
    Keys.onPressed: event => event.accepted = isPlain(event.modifiers) && zoom(event.key)

    Accessible.role: Accessible.Pane
    Accessible.name: "의존관계"

    IssueGraphModel {
        id: graph
        view: pane.view
    }
    Rectangle {
        anchors.fill: parent
        color: Theme.canvas
    }
    IssueGraphToolbar {
        id: bar
        width: parent.width
        graph: graph
        view: pane.view
    }
    IssueGraphCanvas {
        id: canvas
        objectName: "graphCanvas"
        anchors.top: bar.bottom
        anchors.bottom: parent.bottom
        width: parent.width
        graph: graph
        focus: true
        activeFocusOnTab: true
        // Of the Tab that came here only the end is heard.
        Keys.onReleased: event => {
            keyed = true
            event.accepted = false
        }
        Keys.onPressed: event => event.accepted = pane.isPlain(event.modifiers) && pane.act(event.key)

        FocusRing {
            visible: canvas.activeFocus && canvas.keyed && graph.focusKey.length === 0 && !graph.isEmpty
            gap: -3
            parentRadius: 0
        }
    }
    EmptyState {
        anchors.horizontalCenter: canvas.horizontalCenter
        y: canvas.y + Math.max(16, (canvas.height - height) / 2)
        visible: graph.isEmpty
        text: "선행·후행이 적힌 이슈가 없습니다"
    }
}
