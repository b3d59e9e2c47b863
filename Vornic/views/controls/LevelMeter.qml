// How loud it is, from silence to full scale; of the microphone where nobody says otherwise.
import QtQuick
import Vornic

Rectangle {
    id: meter

    property real level: 0
    property bool clipping: false

    implicitHeight: 10
    radius: height / 2
    color: Theme.track
    Accessible.role: Accessible.ProgressBar
    Accessible.name: qsTr("Loudness of the microphone")

    Rectangle {
        width: meter.width * meter.level
        height: parent.height
        radius: parent.radius
        color: meter.clipping ? Theme.warning : Theme.focus
        Behavior on width { NumberAnimation { duration: Theme.quick } }
    }
}
