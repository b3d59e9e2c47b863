// One part of what makes a sound, scrolled where it is longer than the window.
import QtQuick
import QtQuick.Layouts
import Vornic

ScrollPage {
    id: page

    required property StudioAdapter studio
    enum Section { Tone, Layers, Switch, Board }
    required property int section
    padding: 0
    spacing: 12
    onSectionChanged: contentY = 0

    // What is not seen is not computed.
    Binding { target: page.studio.equalizer; property: "seen"; value: page.visible && page.section === SoundSection.Tone }
    Binding { target: page.studio.shape; property: "seen"; value: page.visible && page.section !== SoundSection.Layers }
    Binding { target: page.studio.layers; property: "seen"; value: page.visible && page.section === SoundSection.Layers }

    EqualizerCard {
        Layout.fillWidth: true
        visible: page.section === SoundSection.Tone
        equalizer: page.studio.equalizer
    }
    SlidersCard {
        Layout.fillWidth: true
        visible: page.section === SoundSection.Tone
        title: qsTr("Shape")
        rows: page.studio.shape.chain
        onMoved: (place, value) => page.studio.shape.setChain(place, value)
    }
    LayersCard {
        Layout.fillWidth: true
        visible: page.section === SoundSection.Layers
        layers: page.studio.layers
    }
    PartsCard {
        Layout.fillWidth: true
        visible: page.section === SoundSection.Switch
        rows: page.studio.parts.switchParts
        onPicked: (part, value) => page.studio.parts.setSwitchPart(part, value)
    }
    SlidersCard {
        Layout.fillWidth: true
        visible: page.section === SoundSection.Switch
        title: qsTr("Character of this sound")
        rows: page.studio.shape.character
        onMoved: (place, value) => page.studio.shape.setCharacter(place, value)
    }
    BoardCards {
        Layout.fillWidth: true
        visible: page.section === SoundSection.Board
        studio: page.studio
    }
}
