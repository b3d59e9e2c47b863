// One key of the picture for who cannot see it, and the ring around the one where the arrow keys
// are.
import QtQuick
import Vornic

Item {
    id: cap

    required property var row
    readonly property string said: row.code < 0 ? qsTr("Power") : row.label === "" ? qsTr("Space") : row.label
    signal pressed()

    Accessible.role: Accessible.Button
    Accessible.name: said
    Accessible.description: row.soundName
    Accessible.selectable: row.code >= 0
    Accessible.selected: row.selected
    Accessible.focusable: row.code >= 0
    Accessible.focused: activeFocus
    Accessible.onPressAction: pressed()

    Rectangle {
        anchors.fill: parent
        anchors.margins: -2
        visible: cap.activeFocus
        radius: 7
        color: "transparent"
        border.color: Theme.focus
        border.width: 3
    }
}
