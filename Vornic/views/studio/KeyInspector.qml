// What the selected keys play, and how, with what they inherit.
import QtQuick
import QtQuick.Layouts
import Vornic

Card {
    id: card

    required property StudioAdapter studio
    readonly property InspectorAdapter inspector: studio.inspector

    function several(value: int): bool {
        return (inspector.several & value) !== 0;
    }

    RowLayout {
        Layout.fillWidth: true
        Label {
            text: card.studio.keyboard.selection
            Layout.maximumWidth: 320
            font.weight: Font.DemiBold
            wrapMode: Text.NoWrap
            elide: Text.ElideRight
        }
        Label {
            Layout.fillWidth: true
            visible: card.inspector.mixed
            text: qsTr("They differ; a change makes them equal.")
            secondary: true
            font.pixelSize: Theme.small
            wrapMode: Text.NoWrap
            elide: Text.ElideRight
        }
        Item {
            Layout.fillWidth: true
            visible: !card.inspector.mixed
        }
        PushButton {
            text: qsTr("Reset to the group")
            enabled: card.inspector.canReset
            onClicked: card.inspector.reset()
        }
    }
    GridLayout {
        Layout.fillWidth: true
        enabled: card.inspector.enabled
        opacity: enabled ? 1 : 0.45
        columns: 2
        columnSpacing: 28
        rowSpacing: 8
        NamedControl {
            name: qsTr("Sound")
            Dropdown {
                width: parent.width
                name: qsTr("Sound")
                options: card.inspector.sounds
                value: card.inspector.sound
                displayText: card.several(InspectorAdapter.Sound) ? qsTr("Several") : currentText
                onPicked: v => card.inspector.sound = v
            }
        }
        NotedSlider {
            name: qsTr("Gain")
            unit: "dB"
            from: -12
            to: 12
            origin: 0
            value: card.inspector.gainDb
            instead: card.several(InspectorAdapter.Gain) ? qsTr("Several") : ""
            note: card.inspector.gainNote
            onMoved: v => card.inspector.gainDb = v
        }
        NamedControl {
            name: qsTr("Release")
            note: card.several(InspectorAdapter.Release) ? qsTr("Several") : card.inspector.releaseNote
            Choice {
                width: parent.width
                name: qsTr("Release")
                options: card.inspector.releases
                value: card.several(InspectorAdapter.Release) ? -1 : card.inspector.release
                onPicked: v => card.inspector.release = v
            }
        }
        NotedSlider {
            name: qsTr("Pitch")
            unit: "st"
            from: -12
            to: 12
            origin: 0
            value: card.inspector.pitch
            instead: card.several(InspectorAdapter.Pitch) ? qsTr("Several") : ""
            note: card.inspector.pitchNote
            onMoved: v => card.inspector.pitch = v
        }
        NamedControl {
            name: qsTr("Place")
            Label {
                anchors.verticalCenter: parent.verticalCenter
                visible: !card.inspector.ownPan
                text: card.inspector.panNote
                secondary: true
            }
            PushButton {
                text: qsTr("Use the key's own place")
                visible: card.inspector.ownPan
                onClicked: card.inspector.resetPan()
            }
        }
        NotedSlider {
            name: qsTr("Pan")
            from: -1
            to: 1
            origin: 0
            value: card.inspector.pan
            instead: card.several(InspectorAdapter.Pan) ? qsTr("Several") : ""
            onMoved: v => card.inspector.pan = v
        }
    }
    SettingRow {
        Layout.fillWidth: true
        title: qsTr("Hear keys come up")
        note: qsTr("Plays the release wherever a key or its group leaves it open.")
        checked: card.studio.parts.releaseByDefault
        onToggled: on => card.studio.parts.releaseByDefault = on
    }
}
