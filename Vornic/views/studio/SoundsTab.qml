// The board's sounds and how the chosen one is made.
import QtQuick
import QtQuick.Layouts
import Vornic

RowLayout {
    id: tab

    required property StudioAdapter studio

    spacing: 16
    Binding { target: tab.studio.stroke; property: "seen"; value: tab.visible }
    SoundList {
        Layout.preferredWidth: 190
        Layout.fillHeight: true
        sounds: tab.studio.sounds
    }
    ColumnLayout {
        Layout.fillWidth: true
        Layout.fillHeight: true
        spacing: 12
        SoundHeader {
            Layout.fillWidth: true
            studio: tab.studio
        }
        RowLayout {
            Layout.fillWidth: true
            spacing: 8
            Repeater {
                model: tab.studio.stroke.rows
                delegate: WaveView {
                    Layout.fillWidth: true
                    Layout.preferredWidth: 100
                    onClicked: tab.studio.stroke.play(row.value)
                }
            }
        }
        Choice {
            id: section
            Layout.fillWidth: true
            name: qsTr("Part of the sound")
            options: [
                { value: SoundSection.Tone, text: qsTr("Tone") }, { value: SoundSection.Layers, text: qsTr("Layers") },
                { value: SoundSection.Switch, text: qsTr("Switch") }, { value: SoundSection.Board, text: qsTr("Board") }
            ]
            value: SoundSection.Tone
            onPicked: v => value = v
        }
        SoundSection {
            Layout.fillWidth: true
            Layout.fillHeight: true
            studio: tab.studio
            section: section.value
        }
    }
}
