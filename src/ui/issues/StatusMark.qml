import QtQuick
import Vesk.Controls

// The status of an issue: each has its own shape, the colour repeats it.
Icon {
    // Number in IssueStatus::Kind.
    required property int status

    readonly property var shapes: ["todo", "doing", "blocked", "review", "done", "cancelled", "other", "unset"]

    name: "status-" + (shapes[status] ?? "unset")
    color: Theme.statusColor(status)
}
