// One drawn key, in the colour of the sound that it plays. The keyboard's one key that has the
// focus is where the arrow keys are.
import QtQuick
import Vornic

Item {
    id: cap

    required property var row
    property bool lit: false
    readonly property color sound: row.sound < 0 ? Theme.track : Theme.soundColour(row.sound)
    readonly property string said: row.code < 0 ? qsTr("Power") : row.label === "" ? qsTr("Space") : row.label

    Accessible.role: Accessible.Button
    Accessible.name: said
    Accessible.description: row.soundName
    Accessible.selectable: row.code >= 0
    Accessible.selected: row.selected
    Accessible.focusable: row.code >= 0
    Accessible.focused: activeFocus

    Rectangle {
        anchors.fill: parent
        anchors.margins: 1.5
        radius: 5
        color: cap.lit ? cap.sound : cap.row.selected ? Theme.selected : Theme.surface
        border.width: cap.row.selected ? 2 : 1
        border.color: cap.row.selected ? Theme.focus : Theme.line

        Rectangle {
            anchors.bottom: parent.bottom
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.margins: 4
            height: 3
            radius: 1.5
            color: cap.lit ? Theme.ink(cap.sound) : cap.sound
        }
        Rectangle {
            anchors.top: parent.top
            anchors.right: parent.right
            anchors.margins: 4
            visible: cap.row.own
            width: 5
            height: 5
            radius: 2.5
            color: cap.lit ? Theme.ink(cap.sound) : Theme.text
        }
        Symbol {
            anchors.centerIn: parent
            visible: cap.row.code < 0
            symbol: "power"
            size: 14
            color: Theme.secondary
        }
        Text {
            anchors.fill: parent
            anchors.margins: 3
            anchors.bottomMargin: parent.height < 30 ? 5 : 8
            visible: cap.row.code >= 0
            text: cap.row.label
            textFormat: Text.PlainText
            color: cap.lit ? Theme.ink(cap.sound) : Theme.text
            font.pixelSize: Math.max(7, Math.min(12, cap.width / 3, cap.height - 10))
            fontSizeMode: Text.Fit
            minimumPixelSize: 6
            elide: Text.ElideRight
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
            Accessible.ignored: true
        }
    }
    Rectangle {
        anchors.fill: parent
        visible: cap.activeFocus
        radius: 7
        color: "transparent"
        border.color: Theme.text
        border.width: 2
    }
}
