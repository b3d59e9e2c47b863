// Options and diagnostics.
import QtQuick
import QtQuick.Layouts
import Vornic

FocusScope {
    id: view

    required property ModelAdapter app
    required property PermissionAdapter permission
    signal openStudio()
    signal openPermission()

    focus: true
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
            text: view.app.lastError
            onDismissed: view.app.dismissError()
        }
        Card {
            Layout.fillWidth: true
            SettingRow {
                Layout.fillWidth: true
                title: qsTr("Show the advanced editor")
                note: qsTr("Build keyboards part by part, shape every sound and give single keys their own sound. \"Open Vornic…\" opens the Studio instead of the simple window.")
                checked: view.app.advanced
                onToggled: on => view.app.advanced = on
            }
            PushButton {
                text: qsTr("Open Studio")
                onClicked: view.openStudio()
            }
        }
        Card {
            Layout.fillWidth: true
            SettingRow {
                Layout.fillWidth: true
                title: qsTr("Go quiet when the microphone is on")
                note: qsTr("Calls use the microphone. On speakers, key sounds would otherwise go into the call.")
                checked: view.app.quietDuringCalls
                onToggled: on => view.app.quietDuringCalls = on
            }
            SettingRow {
                Layout.fillWidth: true
                title: qsTr("Notice password fields in every program")
                note: qsTr("Turns on the desktop's accessibility while Vornic runs. Programs started after that tell which field has the focus, and may be a little slower.")
                checked: view.app.noticePasswordsEverywhere
                onToggled: on => view.app.noticePasswordsEverywhere = on
            }
            SettingRow {
                Layout.fillWidth: true
                visible: view.app.canStartWithSession
                title: qsTr("Start with the session")
                checked: view.app.startsWithSession
                onToggled: on => view.app.startsWithSession = on
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
                options: [
                    { value: "auto", text: qsTr("Automatic") },
                    { value: "headphones", text: qsTr("Headphones") },
                    { value: "speakers", text: qsTr("Speakers") }
                ]
                value: view.app.outputKind
                onPicked: v => view.app.outputKind = v
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
                text: view.app.credits
                secondary: true
            }
            PushButton {
                visible: view.permission.offered
                text: view.permission.granted ? qsTr("Turn off Input Monitoring…") : qsTr("Turn on Input Monitoring…")
                onClicked: view.openPermission()
            }
        }
        SectionTitle { text: qsTr("Diagnostics") }
        DiagnosticsCard {
            Layout.fillWidth: true
            app: view.app
        }
    }
}
