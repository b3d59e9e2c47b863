// One stroke to be kept or not.
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Vornic

RowLayout {
    id: row

    required property RecordingAdapter recorder
    required property int index
    required property bool ticked
    required property int rank
    required property real snr
    required property real seconds
    required property var wave
    required property real millis
    required property real cutBegin
    required property real cutEnd
    required property bool moved
    required property real releaseBegin
    required property real releaseEnd

    spacing: 10
    Tick {
        checked: row.ticked
        Accessible.name: qsTr("Keep keystroke %1").arg(row.rank)
        onToggled: {
            const wanted = checked;
            checked = Qt.binding(() => row.ticked);
            row.recorder.tick(row.index, wanted);
        }
    }
    Label {
        Layout.preferredWidth: 20
        horizontalAlignment: Text.AlignRight
        text: row.rank
        font.weight: Font.DemiBold
        Accessible.name: qsTr("Rank %1").arg(row.rank)
    }
    StrokeCutView {
        Layout.fillWidth: true
        implicitHeight: 44
        opacity: row.ticked ? 1 : 0.5
        rank: row.rank
        wave: row.wave
        cutBegin: row.cutBegin
        cutEnd: row.cutEnd
        releaseBegin: row.releaseBegin
        releaseEnd: row.releaseEnd
        withRelease: row.recorder.keepsReleases
        onPlay: row.recorder.play(row.index)
        onBeginMoved: share => row.recorder.moveBegin(row.index, share)
        onEndMoved: share => row.recorder.moveEnd(row.index, share)
        onBeginNudged: millis => row.recorder.nudgeBegin(row.index, millis)
        onEndNudged: millis => row.recorder.nudgeEnd(row.index, millis)
    }
    ColumnLayout {
        Layout.preferredWidth: 106
        spacing: 0
        Label {
            text: qsTr("%1 dB").arg(Math.round(row.snr))
            font.weight: Font.DemiBold
            Accessible.name: qsTr("%1 decibels above the noise of the room").arg(Math.round(row.snr))
        }
        Label {
            text: qsTr("%1 ms, at %2 s").arg(Math.round(row.millis)).arg(row.seconds.toFixed(1))
            secondary: true
            font.pixelSize: Theme.small
        }
    }
    PushButton {
        symbol: "undo"
        opacity: row.moved ? 1 : 0
        enabled: row.moved
        Accessible.name: qsTr("Undo the cut of keystroke %1").arg(row.rank)
        hint: qsTr("Back to the cut that Vornic made")
        onClicked: row.recorder.resetCut(row.index)
    }
    PushButton {
        symbol: "play"
        Accessible.name: qsTr("Play keystroke %1").arg(row.rank)
        onClicked: row.recorder.play(row.index)
    }
}
