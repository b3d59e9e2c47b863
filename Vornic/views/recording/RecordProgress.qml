// What a recording has brought so far.
import QtQuick
import QtQuick.Layouts
import Vornic

ColumnLayout {
    id: view

    required property RecordingAdapter recorder

    spacing: 10
    RowLayout {
        Label {
            Layout.fillWidth: true
            text: view.recorder.good === 1 ? qsTr("1 good keystroke") : qsTr("%1 good keystrokes").arg(view.recorder.good)
            font.pixelSize: Theme.title
            font.weight: Font.DemiBold
        }
        Label {
            text: qsTr("%1 s left").arg(view.recorder.secondsLeft)
            font.pixelSize: Theme.title
        }
    }
    LevelMeter {
        Layout.fillWidth: true
        level: view.recorder.level
        clipping: view.recorder.clipping
    }
    RowLayout {
        spacing: Theme.gap
        Symbol {
            visible: view.recorder.verdict !== ""
            symbol: view.recorder.lastIsGood ? "check-circle" : "warning"
            color: view.recorder.lastIsGood ? Theme.text : Theme.warning
        }
        Label {
            Layout.fillWidth: true
            text: view.recorder.verdict === "" ? qsTr("Waiting for the first key…") : view.recorder.verdict
            secondary: view.recorder.verdict === ""
        }
    }
    Item { Layout.fillHeight: true }
}
