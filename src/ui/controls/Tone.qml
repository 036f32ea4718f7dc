import QtQuick
import Vesk.Controls

// What a coloured notice means: its soft ground, its ink and its icon.
QtObject {
    required property string name

    readonly property color ground: {
        switch (name) {
        case "accent": return Theme.accentSoft
        case "success": return Theme.successSoft
        case "warning": return Theme.warningSoft
        case "danger": return Theme.dangerSoft
        case "info": return Theme.infoSoft
        case "wait": return Theme.waitSoft
        default: return Theme.hover
        }
    }
    readonly property color ink: {
        switch (name) {
        case "accent": return Theme.accent
        case "success": return Theme.success
        case "warning": return Theme.warning
        case "danger": return Theme.danger
        case "info": return Theme.info
        case "wait": return Theme.wait
        default: return Theme.text2
        }
    }
    readonly property string iconName: name === "success" ? "check"
        : name === "warning" || name === "danger" ? "warning" : "info"
}
