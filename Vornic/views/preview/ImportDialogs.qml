// Asks for what is to be opened. Loaded when it is first needed.
import QtQuick
import QtQuick.Dialogs

Item {
    id: dialogs

    signal picked(url file)

    function ask(folder: bool) {
        if (folder)
            folders.open();
        else
            files.open();
    }

    FileDialog {
        id: files
        title: qsTr("Import board or sound pack")
        acceptLabel: qsTr("Open")
        nameFilters: [
            qsTr("Boards and sound packs (*.vornic *.zip *.dslibrary *.tar *.tgz *.tar.gz *.tar.xz *.tar.bz2 *.tar.zst *.json *.yaml *.yml *.toml *.sfz *.dspreset)"),
            qsTr("Vornic boards (*.vornic)"),
            qsTr("All files (*)")
        ]
        onAccepted: dialogs.picked(selectedFile)
    }
    FolderDialog {
        id: folders
        title: qsTr("Import sound packs")
        acceptLabel: qsTr("Open")
        onAccepted: dialogs.picked(selectedFolder)
    }
}
