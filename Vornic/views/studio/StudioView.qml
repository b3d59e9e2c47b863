// Builds boards part by part: which key plays what, and how each sound is made.
import QtQuick
import QtQuick.Layouts
import Vornic

FocusScope {
    id: view

    required property Adapters app
    readonly property StudioAdapter studio: app.studio

    focus: true
    Keys.onEscapePressed: view.app.windows.closeWindow(view.Window.window)
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
            onExportBoard: files.ask()
        }
        ErrorLine {
            Layout.fillWidth: true
            text: view.app.status.lastError
            onDismissed: view.app.status.dismissError()
        }
        FileLine {
            Layout.fillWidth: true
            app: view.app
        }
        RowLayout {
            spacing: Theme.gap
            Choice {
                implicitWidth: 160
                name: qsTr("Studio")
                options: [{ value: StudioAdapter.Keys, text: qsTr("Keys") }, { value: StudioAdapter.Sounds, text: qsTr("Sounds") }]
                value: view.app.studio.tab
                onPicked: v => view.app.studio.tab = v
            }
            Item { Layout.fillWidth: true }
            Symbol { symbol: "speaker" }
            ValueSlider {
                Layout.preferredWidth: 84
                value: view.app.settings.volume
                Accessible.name: qsTr("Volume")
                onMoved: view.app.settings.volume = value
            }
            SoundsSwitch { app: view.app }
            Item { Layout.fillWidth: true }
            RecordingEntries {
                onRecord: recordings.record()
                onImportRecording: recordings.askForFile()
            }
        }
        KeysTab {
            Layout.fillWidth: true
            Layout.fillHeight: true
            visible: view.studio.tab === StudioAdapter.Keys
            studio: view.studio
            live: view.app.keyboard
        }
        SoundsTab {
            Layout.fillWidth: true
            Layout.fillHeight: true
            visible: view.studio.tab === StudioAdapter.Sounds
            studio: view.studio
        }
    }
    RecordingLayer {
        id: recordings
        anchors.fill: parent
        recorder: view.app.recorder
    }
    Loader {
        id: files
        objectName: "files"

        function ask() {
            active = true;
            item.ask(view.app.board.exportSuggestion());
        }

        active: false
        source: "BoardFileDialog.qml"
        Connections {
            target: files.item
            function onPicked(file) {
                view.app.board.exportTo(file);
            }
        }
    }
    Shortcut {
        sequences: [StandardKey.Undo]
        onActivated: view.app.board.undo()
    }
    Shortcut {
        sequences: [StandardKey.Redo]
        onActivated: view.app.board.redo()
    }
}
