import QtQuick
import QtQuick.Templates as T
import Vesk.Controls

// A button with words. One primary button per region.
T.Button {
    id: control

    enum Kind { Plain, Primary, Quiet, Destructive, DestructivePrimary }

    property int kind: VButton.Plain
    property string iconName
    // The keys that do the same, shown inside.
    property string keys
    property string tip
    // Off where Enter must not answer, as on a permission card.
    property bool enterClicks: true

    readonly property bool filled: kind === VButton.Primary || kind === VButton.DestructivePrimary
    readonly property bool lit: enabled && (hovered || down)
    property color ink: !enabled ? Theme.textOff : filled ? Theme.onAccent
        : kind === VButton.Destructive ? Theme.danger : kind === VButton.Quiet ? Theme.text2 : Theme.text
    property color ground: {
        if (filled && !enabled)
            return Theme.hover
        if (kind === VButton.Primary)
            return lit ? Theme.accentHover : Theme.accentFill
        if (kind === VButton.DestructivePrimary)
            return lit ? Theme.dangerHover : Theme.dangerFill
        if (lit)
            return Theme.hover
        return kind === VButton.Quiet ? "transparent" : Theme.raised
    }
    property color edge: filled || kind === VButton.Quiet ? "transparent" : enabled ? Theme.line2 : Theme.line

    implicitWidth: Math.max(Theme.px(28), contentItem.implicitWidth + leftPadding + rightPadding)
    implicitHeight: Theme.px(28)
    leftPadding: text.length > 0 ? 12 : 6
    rightPadding: leftPadding
    font: Theme.ui
    focusPolicy: Qt.StrongFocus
    Accessible.description: tip

    Keys.onReturnPressed: event => pressedEnter(event)
    Keys.onEnterPressed: event => pressedEnter(event)

    function pressedEnter(event: KeyEvent): void {
        // Ctrl+Enter is the form's around it.
        event.accepted = control.enterClicks && !event.isAutoRepeat && !(event.modifiers & Qt.ControlModifier)
        if (event.accepted)
            control.clicked()
    }

    contentItem: Item {
        id: content

        // From what the words want, not from what they get: the button's own width follows from this.
        implicitWidth: words.implicitWidth + (sign.visible ? sign.width + row.spacing : 0)
            + (control.keys.length > 0 ? cap.implicitWidth + row.spacing : 0) - (words.visible ? 0 : row.spacing)
        implicitHeight: row.implicitHeight

        Row {
            id: row
            anchors.centerIn: parent
            height: parent.height
            spacing: 6

            Icon {
                id: sign
                anchors.verticalCenter: parent.verticalCenter
                visible: control.iconName.length > 0
                name: control.iconName
                color: control.ink
                size: 14
            }
            Label {
                id: words
                anchors.verticalCenter: parent.verticalCenter
                visible: text.length > 0
                width: Math.min(implicitWidth, control.availableWidth - (sign.visible ? sign.width + row.spacing : 0)
                                - (cap.visible ? cap.implicitWidth + row.spacing : 0))
                text: control.text
                font: control.font
                color: control.ink
                Accessible.ignored: true
            }
            Label {
                id: cap
                anchors.verticalCenter: parent.verticalCenter
                // The words come first.
                visible: control.keys.length > 0 && content.width + 1 > content.implicitWidth
                text: control.keys
                font: Theme.meta
                color: control.filled && control.enabled ? Theme.onAccent
                    : control.kind === VButton.Destructive ? control.ink : Theme.text3
                Accessible.ignored: true
            }
        }
    }

    background: Rectangle {
        radius: Theme.radius
        color: control.ground
        border.color: control.edge

        FocusRing { visible: control.visualFocus }
    }

    HoverTip {
        wanted: control.hovered || control.visualFocus
        text: control.tip
    }
}
