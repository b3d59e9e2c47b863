// A board that somebody sent: what it looks and sounds like, before anything of it is kept.
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Vornic

FocusScope {
    id: view

    required property Adapters app
    readonly property PreviewAdapter preview: app.preview

    focus: true
    implicitWidth: 720
    implicitHeight: 620

    Rectangle {
        anchors.fill: parent
        color: Theme.window
    }
    ColumnLayout {
        anchors.fill: parent
        anchors.margins: 24
        spacing: 14

        RowLayout {
            spacing: 12
            Rectangle {
                Layout.preferredWidth: 14
                Layout.preferredHeight: 14
                radius: 7
                color: view.preview.colour
                border.color: Theme.line
            }
            Label {
                Layout.fillWidth: true
                text: view.preview.name
                font.pixelSize: Theme.heading
                font.weight: Font.Bold
                elide: Text.ElideRight
                wrapMode: Text.Wrap
                maximumLineCount: 2
                Accessible.role: Accessible.Heading
            }
        }
        Label {
            Layout.fillWidth: true
            visible: text !== ""
            text: view.preview.detail
            elide: Text.ElideRight
            maximumLineCount: 2
        }
        KeyboardPicture {
            Layout.fillWidth: true
            Layout.preferredHeight: (view.width - 48) * layoutHeight / Math.max(1, layoutWidth)
            keys: view.preview.keys
            layoutWidth: view.preview.layoutWidth
            layoutHeight: view.preview.layoutHeight
        }
        Label {
            Layout.fillWidth: true
            text: view.preview.contents
            secondary: true
        }
        ErrorLine {
            Layout.fillWidth: true
            text: view.app.status.lastError
            onDismissed: view.app.status.dismissError()
        }
        ScrollView {
            id: scroll
            Layout.fillWidth: true
            Layout.fillHeight: true
            clip: true
            contentWidth: availableWidth
            Label {
                width: scroll.availableWidth
                text: view.preview.credits
                secondary: true
                font.pixelSize: Theme.small
            }
        }
        Label {
            Layout.fillWidth: true
            text: qsTr("Your keys play it now. Nothing is kept until you say so.")
            secondary: true
        }
        RowLayout {
            spacing: Theme.gap
            PushButton {
                symbol: "play"
                text: qsTr("Play")
                focus: true
                onClicked: view.preview.play()
            }
            Item { Layout.fillWidth: true }
            PushButton {
                text: qsTr("Cancel")
                onClicked: view.preview.drop()
            }
            PushButton {
                text: qsTr("Add to my keyboards")
                prominent: true
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
