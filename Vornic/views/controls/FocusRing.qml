// Shows which control the keyboard acts on.
import QtQuick
import Vornic

Rectangle {
    property Item control: parent

    anchors.fill: parent
    anchors.margins: -3
    visible: control.visualFocus
    radius: Theme.radius + 2
    color: "transparent"
    border.color: Theme.focus
    border.width: 2
}
