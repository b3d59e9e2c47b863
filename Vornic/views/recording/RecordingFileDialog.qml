// Asks for a recording of typing. Loaded when it is first needed.
import QtQuick.Dialogs

FileDialog {
    title: qsTr("Import a recording")
    fileMode: FileDialog.OpenFile
    nameFilters: [qsTr("Recordings (*.wav *.flac *.ogg *.oga *.opus *.mp3 *.m4a *.mp4 *.aac *.aif *.aiff *.caf *.au)"), qsTr("All files (*)")]
}
