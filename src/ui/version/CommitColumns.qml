import QtQml
import Vesk.Controls
import Vesk.Version

// Where the columns of the commit table lie.
QtObject {
    id: columns

    required property VersionMeasures measures
    required property int lanes
    required property real room

    // Until someone chooses: room for the lanes, within reason.
    readonly property real graph: measures.graph > 0 ? Math.min(measures.graph, room / 2)
        : Math.min(Math.max(Theme.px(lanes * 16 + 20), Theme.px(72)), Math.max(Theme.px(72), room / 4))
    readonly property real author: Theme.px(measures.author)
    readonly property real hash: Theme.px(measures.hash)
    readonly property real date: Theme.px(measures.date)
    readonly property real end: 16
    readonly property real subject: Math.max(80, room - graph - author - hash - date - 24 - end)
    readonly property real subjectX: graph + 12
    readonly property real authorX: subjectX + subject + 12
    readonly property real hashX: authorX + author
    readonly property real dateX: hashX + hash
}
