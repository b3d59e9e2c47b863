// The first start: hear a key within a minute.
import QtQuick
import QtQuick.Layouts
import Vornic

FocusScope {
    id: view

    required property Adapters app

    focus: true
    implicitWidth: 520
    implicitHeight: page.wholeHeight

    Rectangle {
        anchors.fill: parent
        color: Theme.window
    }
    ScrollPage {
        id: page
        anchors.fill: parent
        padding: 28

        Label {
            text: qsTr("Welcome to Vornic")
            font.pixelSize: Theme.heading
            font.weight: Font.Bold
            Accessible.role: Accessible.Heading
        }
        Label {
            Layout.fillWidth: true
            text: qsTr("Every key you press sounds like a mechanical keyboard, in whatever window you type. No keystroke is kept or sent anywhere.")
        }
        PermissionBlock {
            Layout.fillWidth: true
            app: view.app
        }
        ErrorLine {
            Layout.fillWidth: true
            text: view.app.status.lastError
            onDismissed: view.app.status.dismissError()
        }
        FirstKey {
            Layout.fillWidth: true
            visible: view.app.status.listening
            app: view.app
        }
        SectionTitle { text: qsTr("Keyboard") }
        Card {
            Layout.fillWidth: true
            padding: 6
            BoardList {
                Layout.fillWidth: true
                boards: view.app.board.boards
                details: true
                most: 4
                onPicked: id => view.app.board.select(id)
            }
        }
        RowLayout {
            spacing: Theme.margin
            Label { text: qsTr("Volume") }
            ValueSlider {
                Layout.fillWidth: true
                value: view.app.settings.volume
                Accessible.name: qsTr("Volume")
                onMoved: view.app.settings.volume = value
            }
        }
        SettingRow {
            Layout.fillWidth: true
            visible: view.app.settings.canStartWithSession
            title: qsTr("Start with the session")
            checked: view.app.settings.startsWithSession
            onToggled: on => view.app.settings.startsWithSession = on
        }
        RowLayout {
            spacing: Theme.gap
            Label {
                Layout.fillWidth: true
                text: qsTr("%1 switches the sounds off and on.").arg(qsTr("⌥⌘K"))
                secondary: true
            }
            PushButton {
                text: qsTr("Done")
                prominent: true
                onClicked: view.app.windows.endWelcome()
            }
        }
    }
    Keys.onEscapePressed: view.app.windows.endWelcome()
}
