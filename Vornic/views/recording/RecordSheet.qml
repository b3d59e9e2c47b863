// Records the keyboard: says how, then shows what the microphone hears and what has come of it.
import QtQuick
import QtQuick.Layouts
import Vornic

Sheet {
    id: sheet

    required property RecordingAdapter recorder
    readonly property bool recording: recorder.phase === RecordingAdapter.Recording
    // What went wrong before the sheet was opened is not about recording.
    property bool tried: false

    function cancel() {
        recorder.stopRecording(false);
        if (tried)
            recorder.dismissFailure();
        close();
    }

    width: 500
    onAboutToShow: tried = false
    onRecordingChanged: (recording ? keys : start).forceActiveFocus()

    contentItem: ColumnLayout {
        spacing: 14
        Keys.onEscapePressed: sheet.cancel()
        Label {
            text: qsTr("Record your keyboard")
            font.pixelSize: Theme.heading
            font.weight: Font.DemiBold
            Accessible.role: Accessible.Heading
        }
        Label {
            Layout.fillWidth: true
            text: qsTr("Press keys one at a time with a short gap after each, about 20 of them. Mix letters, space and enter. Vornic stays quiet while it listens.")
        }
        Item {
            Layout.fillWidth: true
            implicitHeight: 96

            RecordFailure {
                anchors.fill: parent
                visible: sheet.tried && sheet.recorder.phase === RecordingAdapter.Idle
                failure: sheet.recorder.failure
                advice: sheet.recorder.advice
            }
            Label {
                visible: sheet.recorder.phase === RecordingAdapter.Starting
                text: qsTr("Getting the microphone ready…")
                secondary: true
            }
            RecordProgress {
                anchors.fill: parent
                visible: sheet.recording
                recorder: sheet.recorder
            }
            // What is typed into the microphone must not press a button: here it goes nowhere.
            Item {
                id: keys
                Keys.onPressed: event => {
                    if (event.key === Qt.Key_Escape)
                        sheet.recorder.stopRecording(true);
                    event.accepted = true;
                }
            }
        }
        RowLayout {
            spacing: Theme.gap
            Label {
                Layout.fillWidth: true
                visible: sheet.recording
                text: qsTr("Esc stops too.")
                secondary: true
                font.pixelSize: Theme.small
            }
            Item { Layout.fillWidth: true }
            PushButton {
                text: qsTr("Cancel")
                focusPolicy: sheet.recording ? Qt.NoFocus : Qt.TabFocus
                onClicked: sheet.cancel()
                Keys.onEscapePressed: sheet.cancel()
            }
            PushButton {
                visible: sheet.recording
                text: qsTr("Stop")
                prominent: true
                focusPolicy: Qt.NoFocus
                onClicked: sheet.recorder.stopRecording(true)
            }
            PushButton {
                id: start
                visible: !sheet.recording
                enabled: sheet.recorder.phase === RecordingAdapter.Idle
                focus: true
                symbol: "mic"
                text: qsTr("Start recording")
                prominent: true
                onClicked: {
                    sheet.tried = true;
                    sheet.recorder.startRecording();
                }
                Keys.onEscapePressed: sheet.cancel()
            }
        }
    }
}
