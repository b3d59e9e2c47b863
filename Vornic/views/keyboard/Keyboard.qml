// A board's keyboard, alive. A press on one of its keys plays it.
import QtQuick
import Vornic

Item {
    id: keyboard

    required property LiveKeyboard source

    // Known before it is laid out where its width is.
    function heightFor(width: real): real {
        return picture.source && source.layoutWidth > 0 ? picture.heightFor(width) : 0;
    }

    implicitHeight: picture.implicitHeight
    Accessible.role: Accessible.Grouping
    Accessible.name: qsTr("Keyboard")

    KeyboardPicture {
        id: picture
        anchors.fill: parent
        source: keyboard.source
        colours: Theme.soundColours
        still: Theme.still
    }
    MouseArea {
        anchors.fill: parent
        onPressed: event => keyboard.source.play(picture.keyAt(event.x, event.y))
    }
    Repeater {
        model: keyboard.source.keys
        delegate: Item {
            id: key

            required property var modelData

            x: picture.bezel + modelData.x * picture.unit
            y: picture.bezel + modelData.y * picture.unit
            width: modelData.w * picture.unit
            height: modelData.h * picture.unit
            Accessible.role: Accessible.Button
            Accessible.name: modelData.said
            Accessible.description: modelData.soundName
            Accessible.onPressAction: keyboard.source.play(modelData.code)
        }
    }
}
