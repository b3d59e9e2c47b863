// Lights while keys are typed.
import QtQuick
import Vornic

Rectangle {
    property bool lit: false

    implicitWidth: 10
    implicitHeight: 10
    radius: 5
    color: lit ? Theme.accent : "transparent"
    border.color: lit ? Theme.text : Theme.secondary
    border.width: 1
    Accessible.role: Accessible.Indicator
    Accessible.name: lit ? qsTr("Keys are being typed") : qsTr("No keys are being typed")
}
