pragma ComponentBehavior: Bound

import QtQuick
import Vesk.Controls
import Vesk.Issues

// The drawing of the graph, moved and scaled as a whole: links, and the cards that are in sight above them.
Item {
    id: canvas

    required property IssueGraphModel graph
    // The keyboard is at work here, not the pointer.
    property bool keyed: false

    Accessible.role: Accessible.Graphic
    Accessible.name: "의존관계 그림"
    Accessible.description: graph.focusText
    clip: true

    Binding {
        target: canvas.graph.stage
        property: "unit"
        value: Theme.scale
    }
    Binding {
        target: canvas.graph.stage
        property: "size"
        value: Qt.size(canvas.width, canvas.height)
    }

    Component.onCompleted: {
        graph.drawLinks(links)
        graph.drawSketches(sketches)
    }

    Item {
        id: picture

        readonly property real line: canvas.graph.stage.tiny ? 1 : 1 / canvas.graph.stage.zoom
        readonly property bool scaled: canvas.graph.stage.percent !== 100

        x: canvas.graph.stage.pan.x
        y: canvas.graph.stage.pan.y
        scale: canvas.graph.stage.scale
        transformOrigin: Item.TopLeft

        GraphLinks {
            id: links
            showsResolved: canvas.graph.showsResolved
            zoom: canvas.graph.stage.scale
            visibleArea: canvas.graph.stage.sight
            backwardColor: Theme.danger
            openColor: Theme.warning
            resolvedColor: Theme.text2
        }
        GraphCardSketches {
            id: sketches
            zoom: canvas.graph.stage.scale
        }
        Item {
            x: canvas.graph.hoverFrame.x
            y: canvas.graph.hoverFrame.y
            width: canvas.graph.hoverFrame.width
            height: canvas.graph.hoverFrame.height

            HoverTip {
                wanted: canvas.graph.hoverText.length > 0
                text: canvas.graph.hoverText
            }
        }
        Item {
            visible: !canvas.graph.stage.tiny

            Repeater {
                model: canvas.graph

                delegate: IssueGraphCard {
                    line: picture.line
                    scaled: picture.scaled
                    onChosen: canvas.graph.choose(key)
                }
            }
        }
        RedrawnWhole {
            x: canvas.graph.stage.sight.x
            y: canvas.graph.stage.sight.y
            width: canvas.graph.stage.sight.width
            height: canvas.graph.stage.sight.height
        }
    }

    HoverHandler {
        onPointChanged: canvas.graph.hover(point.position)
        onHoveredChanged: {
            if (!hovered)
                canvas.graph.leave()
        }
    }
    PinchHandler {
        property real last: 1

        target: null
        onActiveChanged: last = 1
        onActiveScaleChanged: {
            canvas.graph.stage.zoomBy(activeScale / last, centroid.position)
            last = activeScale
        }
    }
    // Above the cards: a drag may begin on one of them.
    MouseArea {
        property point from

        anchors.fill: parent
        cursorShape: canvas.graph.isEmpty ? Qt.ArrowCursor : pressed ? Qt.ClosedHandCursor : Qt.ArrowCursor
        Accessible.ignored: true
        onPressed: mouse => {
            from = Qt.point(mouse.x, mouse.y)
            canvas.keyed = false
            canvas.forceActiveFocus(Qt.MouseFocusReason)
        }
        onPositionChanged: mouse => canvas.graph.stage.drag(Qt.point(mouse.x - from.x, mouse.y - from.y))
        onReleased: mouse => {
            if (canvas.graph.stage.endDrag())
                canvas.graph.click(Qt.point(mouse.x, mouse.y))
        }
        onCanceled: canvas.graph.stage.endDrag()
        onDoubleClicked: mouse => canvas.graph.openAt(Qt.point(mouse.x, mouse.y))
        onWheel: wheel => canvas.graph.stage.wheel(Qt.point(wheel.angleDelta.x, wheel.angleDelta.y),
                                                   Qt.point(wheel.x, wheel.y),
                                                   (wheel.modifiers & Qt.ControlModifier) !== 0,
                                                   (wheel.modifiers & Qt.ShiftModifier) !== 0)
    }
}
