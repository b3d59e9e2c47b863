// Options and diagnostics.
import QtQuick
import QtQuick.Layouts
import Vornic

FocusScope {
    id: view

    required property Adapters app

    focus: true
    Keys.onEscapePressed: view.app.windows.closeWindow(view.Window.window)
    implicitWidth: 560
    implicitHeight: Math.min(page.wholeHeight, 720)

    Rectangle {
        anchors.fill: parent
        color: Theme.window
    }

    ScrollPage {
        id: page
        anchors.fill: parent

        ErrorLine {
            Layout.fillWidth: true
            text: view.app.status.lastError
            onDismissed: view.app.status.dismissError()
        }
        Card {
            Layout.fillWidth: true
            SettingRow {
                Layout.fillWidth: true
                title: qsTr("Show the advanced editor")
                note: qsTr("Build keyboards part by part, shape every sound and give single keys their own sound. \"Open Vornic…\" opens the Studio instead of the simple window.")
                checked: view.app.settings.advanced
                onToggled: on => view.app.settings.advanced = on
            }
            PushButton {
                text: qsTr("Open Studio")
                onClicked: view.app.windows.openStudio()
            }
        }
        Card {
            Layout.fillWidth: true
            SettingRow {
                Layout.fillWidth: true
                title: qsTr("Go quiet when the microphone is on")
                note: qsTr("Calls use the microphone. On speakers, key sounds would otherwise go into the call.")
                checked: view.app.settings.quietDuringCalls
                onToggled: on => view.app.settings.quietDuringCalls = on
            }
            SettingRow {
                Layout.fillWidth: true
                title: qsTr("Notice password fields in every program")
                note: qsTr("Turns on the desktop's accessibility while Vornic runs. Programs started after that tell which field has the focus, and may be a little slower.")
                checked: view.app.settings.noticePasswordsEverywhere
                onToggled: on => view.app.settings.noticePasswordsEverywhere = on
            }
            SettingRow {
                Layout.fillWidth: true
                visible: view.app.settings.canStartWithSession
                title: qsTr("Start with the session")
                checked: view.app.settings.startsWithSession
                onToggled: on => view.app.settings.startsWithSession = on
            }
            SettingRow {
                Layout.fillWidth: true
                title: qsTr("Reduce motion")
                note: qsTr("Keys of the drawn keyboard light up without moving. Follows the desktop's own setting.")
                checked: view.app.settings.reduceMotion
                onToggled: on => view.app.settings.reduceMotion = on
            }
            RowLayout {
                Label {
                    Layout.fillWidth: true
                    text: qsTr("Mute or unmute")
                }
                Label {
                    text: qsTr("⌥⌘K")
                    secondary: true
                }
            }
        }
        Card {
            Layout.fillWidth: true
            Label { text: qsTr("Sound comes out of") }
            Choice {
                Layout.fillWidth: true
                name: qsTr("Sound comes out of")
                options: view.app.settings.outputKinds
                value: view.app.settings.outputKind
                onPicked: v => view.app.settings.outputKind = v
            }
            Label {
                Layout.fillWidth: true
                text: qsTr("Vornic places keys outside your head only on earphones. Automatic works it out; choose by hand if a Bluetooth speaker is treated as earphones.")
                secondary: true
                font.pixelSize: Theme.small
            }
        }
        Card {
            Layout.fillWidth: true
            PushButton {
                text: credits.visible ? qsTr("Hide sound credits") : qsTr("Sound credits…")
                onClicked: credits.visible = !credits.visible
            }
            Label {
                id: credits
                Layout.fillWidth: true
                visible: false
                text: view.app.board.credits
                secondary: true
            }
            PushButton {
                visible: view.app.permission.offered
                text: view.app.permission.granted ? qsTr("Turn off Input Monitoring…") : qsTr("Turn on Input Monitoring…")
                onClicked: view.app.windows.openPermission()
            }
        }
        SectionTitle { text: qsTr("Diagnostics") }
        DiagnosticsCard {
            Layout.fillWidth: true
            diagnostics: view.app.diagnostics
        }
    }
}
