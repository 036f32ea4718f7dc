import QtQuick

// The place of something that most windows never show: its file is not even read before it is wanted. With it go its
// fonts and images, which are what a start waits for.
Loader {
    id: lazy

    required property url file
    required property bool wanted
    // Given to the item when it is made. What changes later belongs behind an object in here.
    required property var properties

    function makeWhenWanted(): void {
        if (wanted && status === Loader.Null)
            setSource(file, properties)
    }

    visible: wanted
    height: wanted && item ? (item as Item).implicitHeight : 0
    onWantedChanged: makeWhenWanted()
    Component.onCompleted: makeWhenWanted()
}
