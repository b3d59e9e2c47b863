// The everyday choices, one below the other: opened from the tray.
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Vornic

FocusScope {
    id: panel

    required property Adapters app

    focus: true
    implicitWidth: 340
    implicitHeight: column.implicitHeight + 2 * Theme.margin

    Rectangle {
        anchors.fill: parent
        color: Theme.window
    }

    ColumnLayout {
        id: column
        anchors.fill: parent
        anchors.margins: Theme.margin
        spacing: 12

        RowLayout {
            spacing: Theme.gap
            ColumnLayout {
                Layout.fillWidth: true
                spacing: 2
                RowLayout {
                    spacing: Theme.gap
                    Label {
                        text: "Vornic"
                        font.pixelSize: Theme.title
                        font.weight: Font.Bold
                        Accessible.role: Accessible.Heading
                    }
                    Lamp { lit: panel.app.status.typing }
                }
                Label {
                    Layout.fillWidth: true
                    text: panel.app.status.subtitle
                    secondary: true
                    elide: Text.ElideRight
                    maximumLineCount: 2
                }
            }
            Toggle {
                checked: panel.app.settings.soundsOn
                focus: true
                Accessible.name: hint
                hint: qsTr("Sounds on or off (⌥⌘K)")
                onToggled: panel.app.settings.soundsOn = checked
            }
        }

        StatusLine {
            Layout.fillWidth: true
            app: panel.app
        }
        PermissionBlock {
            Layout.fillWidth: true
            app: panel.app
        }
        ErrorLine {
            Layout.fillWidth: true
            isError: false
            text: panel.app.status.note
            onDismissed: panel.app.status.dismissNote()
        }
        ErrorLine {
            Layout.fillWidth: true
            text: panel.app.status.lastError
            onDismissed: panel.app.status.dismissError()
        }
        FileLine {
            Layout.fillWidth: true
            app: panel.app
        }

        SectionTitle { text: qsTr("Keyboard") }
        BoardList {
            Layout.fillWidth: true
            boards: panel.app.board.boards
            onPicked: id => panel.app.board.select(id)
        }
        Label {
            Layout.fillWidth: true
            visible: panel.app.board.boards.count === 0
            text: qsTr("No sound pack was found. Install the package bucklespring-data, then start Vornic again.")
            secondary: true
        }

        SectionTitle { text: qsTr("Where it sits") }
        PlacementChoice {
            Layout.fillWidth: true
            app: panel.app
        }

        OutputLine {
            Layout.fillWidth: true
            app: panel.app
        }

        Rectangle {
            Layout.fillWidth: true
            implicitHeight: 1
            color: Theme.line
        }
        RowLayout {
            spacing: Theme.gap
            PushButton {
                text: qsTr("Open Vornic…")
                onClicked: panel.app.windows.openVornic()
            }
            PushButton {
                text: qsTr("Settings")
                onClicked: panel.app.windows.openSettings()
            }
            Item { Layout.fillWidth: true }
            PushButton {
                text: qsTr("Quit")
                onClicked: panel.app.windows.quit()
            }
        }
    }
    Keys.onEscapePressed: panel.app.windows.dismissPanel()
}
