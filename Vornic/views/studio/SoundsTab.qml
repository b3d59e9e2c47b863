// How the chosen sound is made.
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Vornic

Flickable {
    id: tab

    required property StudioSoundsAdapter soundsEditor

    contentHeight: column.implicitHeight
    boundsBehavior: Flickable.StopAtBounds
    clip: true
    ScrollBar.vertical: ScrollBar {}

    ColumnLayout {
        id: column
        width: tab.width - 12
        spacing: 12

        RowLayout {
            spacing: Theme.gap
            Dropdown {
                implicitWidth: 220
                name: qsTr("Sound")
                options: tab.soundsEditor.sounds
                value: tab.soundsEditor.sound
                onPicked: v => tab.soundsEditor.sound = v
            }
            Choice {
                name: qsTr("Stroke")
                implicitWidth: 200
                visible: tab.soundsEditor.hasRelease
                options: [{ value: false, text: qsTr("Press") }, { value: true, text: qsTr("Release") }]
                value: tab.soundsEditor.editingRelease
                onPicked: v => tab.soundsEditor.editingRelease = v
            }
            Item { Layout.fillWidth: true }
            PushButton {
                symbol: "play"
                text: qsTr("Play")
                onClicked: tab.soundsEditor.audition()
            }
        }
        WaveView {
            Layout.fillWidth: true
            wave: tab.soundsEditor.wave
            millis: tab.soundsEditor.waveMillis
        }
        RowLayout {
            Layout.fillWidth: true
            spacing: 12
            EqualizerCard {
                Layout.fillWidth: true
                Layout.fillHeight: true
                soundsEditor: tab.soundsEditor
            }
            SlidersCard {
                Layout.fillWidth: true
                Layout.fillHeight: true
                title: qsTr("Shape")
                rows: tab.soundsEditor.chain
                onMoved: (field, value) => tab.soundsEditor.setChain(field, value)
            }
        }
        RowLayout {
            Layout.fillWidth: true
            spacing: 12
            PartsCard {
                Layout.fillWidth: true
                Layout.preferredWidth: 215
                Layout.fillHeight: true
                title: qsTr("Switch")
                rows: tab.soundsEditor.switchParts
                onPicked: (part, value) => tab.soundsEditor.setSwitchPart(part, value)
            }
            PartsCard {
                Layout.fillWidth: true
                Layout.preferredWidth: 215
                Layout.fillHeight: true
                title: qsTr("Build")
                rows: tab.soundsEditor.buildParts
                onPicked: (part, value) => tab.soundsEditor.setBuildPart(part, value)
            }
            ColumnLayout {
                Layout.fillWidth: true
                Layout.preferredWidth: 300
                spacing: 12
                SlidersCard {
                    Layout.fillWidth: true
                    title: qsTr("Character")
                    rows: tab.soundsEditor.character
                    onMoved: (field, value) => tab.soundsEditor.setCharacter(field, value)
                }
                FoamsCard {
                    Layout.fillWidth: true
                    Layout.fillHeight: true
                    soundsEditor: tab.soundsEditor
                }
            }
        }
    }
}
