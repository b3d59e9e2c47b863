// How much of something that takes a while is done.
import QtQuick
import Vornic

Rectangle {
    id: line

    // 0 to 1.
    property real share: 0

    implicitHeight: 6
    radius: 3
    color: Theme.track
    Accessible.role: Accessible.ProgressBar
    Accessible.name: qsTr("%1 % read").arg(Math.round(share * 100))
    Rectangle {
        width: parent.width * Math.max(0, Math.min(1, line.share))
        height: parent.height
        radius: 3
        color: Theme.focus
    }
}
