// Asks for the file that a board is written to or read from. Loaded when it is first needed.
import QtQuick.Dialogs

FileDialog {
    property bool saving: false
    signal picked(url file)

    // `suggestion`: where a board is written if nothing else is said.
    function ask(save: bool, suggestion: url) {
        saving = save;
        if (save)
            selectedFile = suggestion;
        open();
    }

    title: saving ? qsTr("Export board") : qsTr("Import board")
    acceptLabel: saving ? qsTr("Save") : qsTr("Open")
    fileMode: saving ? FileDialog.SaveFile : FileDialog.OpenFile
    nameFilters: [qsTr("Vornic boards (*.vornic)")]
    defaultSuffix: "vornic"
    onAccepted: picked(selectedFile)
}
