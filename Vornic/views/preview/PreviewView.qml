// Boards and sound packs that somebody sent: what they look and sound like, before anything of them
// is kept.
import QtQuick
import QtQuick.Layouts
import Vornic

FocusScope {
    id: view

    required property Adapters app
    readonly property PreviewAdapter preview: app.preview
    readonly property bool several: app.files.packs.count > 0
    readonly property real besideList: several ? list.width + 48 : 24

    focus: true
    implicitWidth: several ? 940 : 720
    implicitHeight: 620

    Rectangle {
        anchors.fill: parent
        color: Theme.window
    }
    PackList {
        id: list
        x: 24
        y: 24
        width: 240
        height: parent.height - 48
        visible: view.several
        app: view.app
    }
    ColumnLayout {
        anchors.fill: parent
        anchors.margins: 24
        anchors.leftMargin: view.besideList
        spacing: 14
        ErrorLine {
            Layout.fillWidth: true
            text: view.app.status.lastError
            onDismissed: view.app.status.dismissError()
        }
        FileLine {
            Layout.fillWidth: true
            app: view.app
        }
        BoardPreview {
            Layout.fillWidth: true
            Layout.fillHeight: true
            visible: view.preview.shown
            preview: view.preview
            room: view.width - view.besideList - 24
        }
        Item {
            Layout.fillWidth: true
            Layout.fillHeight: true
            visible: !view.preview.shown
        }
        RowLayout {
            spacing: Theme.gap
            PushButton {
                symbol: "play"
                text: qsTr("Play")
                enabled: view.preview.shown
                onClicked: view.preview.play()
            }
            Item { Layout.fillWidth: true }
            PushButton {
                text: view.several ? qsTr("Close") : qsTr("Cancel")
                onClicked: view.preview.drop()
            }
            PushButton {
                text: qsTr("Add to my keyboards")
                enabled: view.preview.shown && !view.app.files.busy
                prominent: !view.several
                onClicked: view.preview.keep()
            }
        }
    }
    Connections {
        target: view.preview
        function onOpenChanged() {
            if (!view.preview.open)
                view.app.windows.closePreview();
        }
    }
    Keys.onEscapePressed: view.preview.drop()
}
