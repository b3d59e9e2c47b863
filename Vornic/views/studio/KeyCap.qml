// One drawn key, in the colour of the sound that it plays.
import QtQuick
import Vornic

Item {
    id: cap

    required property var key
    property bool lit: false
    readonly property color sound: key.sound === undefined ? Theme.track : Theme.soundColour(key.sound)

    Accessible.role: Accessible.Button
    Accessible.name: key.code < 0 ? qsTr("Power") : key.label === "" ? qsTr("Space") : key.label
    Accessible.description: key.soundName
    Accessible.selected: key.selected

    Rectangle {
        anchors.fill: parent
        anchors.margins: 1.5
        radius: 5
        color: cap.lit ? cap.sound : Theme.surface
        border.width: cap.key.selected ? 2 : 1
        border.color: cap.key.selected ? Theme.focus : Theme.line

        Rectangle {
            anchors.bottom: parent.bottom
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.margins: 4
            height: 3
            radius: 1.5
            color: cap.sound
        }
        Rectangle {
            anchors.top: parent.top
            anchors.right: parent.right
            anchors.margins: 4
            visible: cap.key.own
            width: 5
            height: 5
            radius: 2.5
            color: Theme.text
        }
        Symbol {
            anchors.centerIn: parent
            visible: cap.key.code < 0
            symbol: "power"
            size: 14
            color: Theme.secondary
        }
        Text {
            anchors.fill: parent
            anchors.margins: 3
            anchors.bottomMargin: 8
            visible: cap.key.code >= 0
            text: cap.key.label
            textFormat: Text.PlainText
            color: cap.lit ? (Theme.luminance(cap.sound) > 0.18 ? "#000000" : "#FFFFFF") : Theme.text
            font.pixelSize: Math.max(7, Math.min(12, cap.width / 3))
            fontSizeMode: Text.HorizontalFit
            minimumPixelSize: 6
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
        }
    }
}
