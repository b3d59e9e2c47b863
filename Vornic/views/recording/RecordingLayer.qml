// Everything about the user's own recordings, over the Studio: sheets, the choice of a file, and
// files that are dropped.
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Window
import Vornic

Item {
    id: layer

    required property RecordingAdapter recorder

    function record() {
        sheet.open();
    }
    function askForFile() {
        files.active = true;
        files.item.open();
    }

    DropArea {
        id: drop
        anchors.fill: parent
        keys: ["text/uri-list"]
        onDropped: event => {
            event.accept();
            layer.recorder.importRecording(event.urls[0]);
        }
    }
    Rectangle {
        anchors.fill: parent
        anchors.margins: 8
        visible: drop.containsDrag
        radius: Theme.radius + 4
        color: Theme.window
        opacity: 0.94
        border.color: Theme.focus
        border.width: 2
        Label {
            anchors.centerIn: parent
            width: Math.min(parent.width - 40, implicitWidth)
            text: qsTr("Drop a recording of typing. Vornic cuts it into single keystrokes.")
            font.pixelSize: Theme.title
            horizontalAlignment: Text.AlignHCenter
        }
    }
    KeptOffer {
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 20
        recorder: layer.recorder
    }

    RecordSheet {
        id: sheet
        objectName: "recordSheet"
        recorder: layer.recorder
    }
    ReadingSheet {
        objectName: "readingSheet"
        recorder: layer.recorder
        visible: layer.recorder.phase === RecordingAdapter.Reading
    }
    StrokeChooser {
        objectName: "strokeChooser"
        recorder: layer.recorder
        visible: layer.recorder.phase === RecordingAdapter.Choosing
        onVisibleChanged: if (visible) sheet.close()
    }
    Loader {
        id: files
        objectName: "recordingFiles"
        active: false
        source: "RecordingFileDialog.qml"
        Connections {
            target: files.item
            function onAccepted() {
                layer.recorder.importRecording(files.item.selectedFile);
            }
        }
    }
    // Nobody records behind a closed window.
    Connections {
        target: layer.Window.window
        function onVisibleChanged() {
            if (!layer.Window.window.visible)
                sheet.cancel();
        }
    }
}
