// The waveform of a stroke, played by a click, with the ends of its cut to be moved.
import QtQuick
import Vornic

Rectangle {
    id: view

    property alias wave: drawn.wave
    property alias cutBegin: drawn.cutBegin
    property alias cutEnd: drawn.cutEnd
    property real releaseBegin: 0
    property real releaseEnd: 0
    property bool withRelease: false
    property int rank: 0
    signal play()
    signal beginMoved(real share)
    signal endMoved(real share)
    signal beginNudged(real millis)
    signal endNudged(real millis)

    radius: Theme.radius - 2
    color: Theme.surface
    border.color: Theme.line
    Accessible.role: Accessible.Graphic
    Accessible.name: qsTr("Keystroke %1").arg(rank)

    Rectangle {
        x: drawn.cutBegin * view.width
        width: (drawn.cutEnd - drawn.cutBegin) * view.width
        height: view.height
        color: Theme.hover
    }
    StrokeWave {
        id: drawn
        anchors.fill: parent
        anchors.topMargin: 2
        anchors.bottomMargin: 2
        releaseBegin: view.withRelease ? view.releaseBegin : 0
        releaseEnd: view.withRelease ? view.releaseEnd : 0
        cutColour: Theme.focus
        releaseColour: Theme.text
        restColour: Theme.secondary
    }
    Label {
        visible: view.releaseEnd > view.releaseBegin
        x: view.releaseBegin * view.width + 2
        anchors.bottom: parent.bottom
        text: qsTr("release")
        secondary: true
        font.pixelSize: Theme.small - 2
    }
    MouseArea {
        anchors.fill: parent
        cursorShape: Qt.PointingHandCursor
        onClicked: view.play()
    }
    CutHandle {
        share: view.cutBegin
        name: qsTr("Beginning of keystroke %1").arg(view.rank)
        onMovedTo: share => view.beginMoved(share)
        onNudged: millis => view.beginNudged(millis)
    }
    CutHandle {
        share: view.cutEnd
        atEnd: true
        name: qsTr("End of keystroke %1").arg(view.rank)
        onMovedTo: share => view.endMoved(share)
        onNudged: millis => view.endNudged(millis)
    }
}
