// Asks for the file that a board is written to or read from. Loaded when it is first needed.
import QtQuick.Dialogs

FileDialog {
    property bool saving: false
    signal picked(url file)

    title: saving ? qsTr("Export board") : qsTr("Import board")
    fileMode: saving ? FileDialog.SaveFile : FileDialog.OpenFile
    nameFilters: [qsTr("Vornic boards (*.vornic)")]
    defaultSuffix: "vornic"
    onAccepted: picked(selectedFile)
}
