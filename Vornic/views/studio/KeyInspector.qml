// What the selected keys play, and how.
import QtQuick
import QtQuick.Layouts
import Vornic

Card {
    id: inspector

    required property StudioKeysAdapter keysEditor

    RowLayout {
        Layout.fillWidth: true
        Label {
            Layout.fillWidth: true
            text: inspector.keysEditor.selection
            font.weight: Font.DemiBold
        }
        PushButton {
            text: qsTr("Reset to the group")
            enabled: inspector.keysEditor.canReset
            onClicked: inspector.keysEditor.reset()
        }
    }
    GridLayout {
        Layout.fillWidth: true
        columns: 2
        columnSpacing: 28
        rowSpacing: 6
        RowLayout {
            Label {
                Layout.preferredWidth: 84
                text: qsTr("Sound")
            }
            Dropdown {
                Layout.fillWidth: true
                name: qsTr("Sound")
                options: inspector.keysEditor.sounds
                value: inspector.keysEditor.sound
                onPicked: v => inspector.keysEditor.sound = v
            }
        }
        SliderRow {
            Layout.fillWidth: true
            name: qsTr("Gain")
            unit: "dB"
            from: -12
            to: 12
            origin: 0
            value: inspector.keysEditor.gainDb
            onMoved: v => inspector.keysEditor.gainDb = v
        }
        RowLayout {
            Label {
                Layout.preferredWidth: 84
                text: qsTr("Release")
            }
            Choice {
                Layout.fillWidth: true
                name: qsTr("Release")
                options: inspector.keysEditor.releases
                value: inspector.keysEditor.release
                onPicked: v => inspector.keysEditor.release = v
            }
        }
        SliderRow {
            Layout.fillWidth: true
            name: qsTr("Pitch")
            unit: "st"
            from: -12
            to: 12
            origin: 0
            value: inspector.keysEditor.pitch
            onMoved: v => inspector.keysEditor.pitch = v
        }
        SliderRow {
            Layout.fillWidth: true
            name: qsTr("Rattle")
            from: 0
            to: 1
            value: inspector.keysEditor.rattle
            onMoved: v => inspector.keysEditor.rattle = v
        }
        SliderRow {
            Layout.fillWidth: true
            name: inspector.keysEditor.ownPan ? qsTr("Pan") : qsTr("Pan (place)")
            from: -1
            to: 1
            origin: 0
            value: inspector.keysEditor.pan
            onMoved: v => inspector.keysEditor.pan = v
        }
    }
    SettingRow {
        Layout.fillWidth: true
        title: qsTr("Hear keys come up")
        note: qsTr("Plays the release wherever a key or its group leaves it open.")
        checked: inspector.keysEditor.releaseByDefault
        onToggled: on => inspector.keysEditor.releaseByDefault = on
    }
}
