// The ways to a sound of the user's own keyboard.
import QtQuick
import QtQuick.Layouts
import Vornic

RowLayout {
    id: entries

    signal record()
    signal importRecording()

    spacing: Theme.gap
    PushButton {
        symbol: "mic"
        text: qsTr("Record your keyboard…")
        onClicked: entries.record()
    }
    PushButton {
        symbol: "waveform"
        text: qsTr("Import a recording…")
        hint: qsTr("Choose a recording of typing. Vornic cuts it into single keystrokes.")
        Accessible.description: hint
        onClicked: entries.importRecording()
    }
}
