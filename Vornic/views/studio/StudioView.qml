// Builds boards part by part: which key plays what, and how each sound is made.
import QtQuick
import QtQuick.Layouts
import Vornic

FocusScope {
    id: view

    required property ModelAdapter app
    required property StudioAdapter studio
    required property RecordingAdapter recorder

    focus: true
    // B compares as its button does, wherever no text is typed.
    Keys.onPressed: event => {
        if (event.key === Qt.Key_B && event.modifiers === Qt.NoModifier) {
            if (!event.isAutoRepeat)
                header.compareButton.begin();
            event.accepted = true;
        }
    }
    Keys.onReleased: event => {
        if (event.key === Qt.Key_B && !event.isAutoRepeat) {
            header.compareButton.end();
            event.accepted = true;
        }
    }
    implicitWidth: 820
    implicitHeight: 800

    Rectangle {
        anchors.fill: parent
        color: Theme.window
    }

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: 20
        spacing: 14

        StudioHeader {
            id: header
            Layout.fillWidth: true
            // The same with and without its second line: an edit under way keeps its place.
            Layout.preferredHeight: 48
            app: view.app
            onExportBoard: files.ask(true)
            onImportBoard: files.ask(false)
        }
        ErrorLine {
            Layout.fillWidth: true
            text: view.app.lastError
            onDismissed: view.app.dismissError()
        }
        RowLayout {
            Choice {
                implicitWidth: 260
                name: qsTr("Studio")
                options: [{ value: "keys", text: qsTr("Keys") }, { value: "sounds", text: qsTr("Sounds") }]
                value: view.app.studioTab
                onPicked: v => view.app.studioTab = v
            }
            Item { Layout.fillWidth: true }
            RecordingEntries {
                onRecord: recordings.record()
                onImportRecording: recordings.askForFile()
            }
        }
        KeysTab {
            Layout.fillWidth: true
            Layout.fillHeight: true
            visible: view.app.studioTab === "keys"
            studio: view.studio
        }
        SoundsTab {
            Layout.fillWidth: true
            Layout.fillHeight: true
            visible: view.app.studioTab === "sounds"
            studio: view.studio
        }
    }
    RecordingLayer {
        id: recordings
        anchors.fill: parent
        recorder: view.recorder
    }
    Loader {
        id: files
        objectName: "files"

        property bool saving: false

        function ask(save) {
            saving = save;
            active = true;
            item.saving = save;
            item.open();
        }

        active: false
        source: "BoardFileDialog.qml"
        Connections {
            target: files.item
            function onPicked(file) {
                if (files.saving)
                    view.app.exportBoard(file);
                else
                    view.app.importBoard(file);
            }
        }
    }
    Shortcut {
        sequences: [StandardKey.Undo]
        onActivated: view.app.undo()
    }
    Shortcut {
        sequences: [StandardKey.Redo]
        onActivated: view.app.redo()
    }
}
