// The edited sound's name, and which of its strokes is edited.
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Vornic

RowLayout {
    id: header

    required property StudioAdapter studio
    readonly property SoundListAdapter sounds: studio.sounds

    spacing: Theme.gap
    EditableText {
        Layout.fillWidth: true
        Layout.maximumWidth: 280
        text: header.sounds.name
        name: qsTr("Name of the sound")
        enabled: header.sounds.place >= 0
        onCommitted: value => header.sounds.name = value
    }
    Item { Layout.fillWidth: true }
    Label {
        id: waiting

        readonly property bool rendering: header.studio.stroke.rendering

        visible: false
        text: qsTr("Rendering…")
        secondary: true
        font.pixelSize: Theme.small
        wrapMode: Text.NoWrap
        onRenderingChanged: if (!rendering) visible = false
        Timer {
            // What is there sooner needs no word.
            interval: Theme.slow
            running: waiting.rendering
            onTriggered: waiting.visible = true
        }
    }
    Choice {
        name: qsTr("Stroke")
        implicitWidth: 180
        visible: header.sounds.hasRelease
        options: [{ value: false, text: qsTr("Press") }, { value: true, text: qsTr("Release") }]
        value: header.sounds.editingRelease
        onPicked: v => header.sounds.editingRelease = v
    }
    PushButton {
        visible: !header.sounds.hasRelease && header.sounds.place >= 0
        symbol: "plus"
        text: qsTr("Release")
        Accessible.name: qsTr("Give this sound a release")
        hint: qsTr("Give this sound a release")
        onClicked: header.sounds.setHasRelease(true)
    }
    PushButton {
        visible: header.sounds.editingRelease
        symbol: "trash"
        Accessible.name: qsTr("Take the release away")
        hint: qsTr("Take the release away")
        onClicked: header.sounds.setHasRelease(false)
    }
}
