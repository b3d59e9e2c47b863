// The first start: hear a key within a minute.
import QtQuick
import QtQuick.Layouts
import Vornic

FocusScope {
    id: view

    required property Adapters app

    focus: true
    implicitWidth: 620
    implicitHeight: page.wholeHeight

    Rectangle {
        anchors.fill: parent
        color: Theme.window
    }
    ScrollPage {
        id: page
        anchors.fill: parent
        padding: 20
        spacing: 10

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
        Keyboard {
            Layout.alignment: Qt.AlignHCenter
            Layout.preferredWidth: Math.min(page.width - 2 * page.padding, 460)
            Layout.preferredHeight: heightFor(Layout.preferredWidth)
            source: view.app.keyboard
        }
        FirstKey {
            Layout.fillWidth: true
            visible: view.app.status.listening
            app: view.app
        }
        StatusCard {
            Layout.fillWidth: true
            visible: view.app.status.listening && view.app.status.why !== ""
            app: view.app
        }
        SectionTitle { text: qsTr("Keyboard") }
        BoardGrid {
            Layout.fillWidth: true
            visible: view.app.board.boards.count > 0
            compact: true
            columns: 3
            rows: 2
            app: view.app
        }
        Label {
            Layout.fillWidth: true
            visible: view.app.board.boards.count === 0
            text: qsTr("No sound pack was found. Install the package bucklespring-data, then start Vornic again.")
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
