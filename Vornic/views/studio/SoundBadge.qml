// The colour and the letter of a sound, as on the keys that play it.
import QtQuick
import Vornic

Rectangle {
    id: badge

    property int place: 0
    property string letter: ""

    implicitWidth: 18
    implicitHeight: 18
    radius: 5
    color: Theme.soundColour(place)
    Accessible.ignored: true

    Text {
        anchors.centerIn: parent
        text: badge.letter
        textFormat: Text.PlainText
        color: Theme.ink(badge.color)
        font.pixelSize: badge.letter.length > 1 ? 9 : 11
        font.weight: Font.Bold
        Accessible.ignored: true
    }
}
