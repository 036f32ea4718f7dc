import QtQuick
import Vesk.Controls

// The project that a window belongs to; a click offers the others.
VButton {
    id: choice

    required property string alias
    required property var projects // a QStringList

    signal chosen(string alias)

    kind: VButton.Quiet
    leftPadding: 6
    rightPadding: 10 + Theme.px(12)
    text: alias
    font: Theme.uiBold
    ink: Theme.text
    Accessible.role: Accessible.ButtonMenu
    Accessible.name: "프로젝트 " + text
    onClicked: menu.setSource(Qt.resolvedUrl("ProjectChoiceMenu.qml"),
                              { parent: choice, projects: projects, alias: alias, visible: true })

    Icon {
        anchors.right: parent.right
        anchors.rightMargin: 6
        anchors.verticalCenter: parent.verticalCenter
        name: "chevron-down"
        size: 12
        color: Theme.text3
    }
    Loader { id: menu }
    Connections {
        target: menu.item as ProjectChoiceMenu
        function onChosen(alias: string): void { choice.chosen(alias) }
        function onClosed(): void { menu.source = "" }
    }
}
