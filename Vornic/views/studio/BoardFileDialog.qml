// Asks for the file that a board is written to. Loaded when it is first needed.
import QtQuick.Dialogs

FileDialog {
    signal picked(url file)

    // `suggestion`: where a board is written if nothing else is said.
    function ask(suggestion: url) {
        selectedFile = suggestion;
        open();
    }

    title: qsTr("Export board")
    acceptLabel: qsTr("Save")
    fileMode: FileDialog.SaveFile
    nameFilters: [qsTr("Vornic boards (*.vornic)")]
    defaultSuffix: "vornic"
    onAccepted: picked(selectedFile)
}
