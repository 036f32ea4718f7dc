import QtQuick
import Vesk.Controls
import Vesk.Issues

// The sheets of an issue window.
SheetHost {
    id: sheets

    required property IssuesView view

    function openNew(): void { open("NewIssueSheet", { view: view }) }
    function openSync(): void { open("BoardSyncSheet", { view: view }) }

    folder: Qt.resolvedUrl("./")
}
