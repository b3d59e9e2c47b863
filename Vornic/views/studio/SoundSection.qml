// One part of what makes a sound, scrolled where it is longer than the window.
import QtQuick
import QtQuick.Layouts
import Vornic

ScrollPage {
    id: page

    required property StudioAdapter studio
    required property string section
    padding: 0
    spacing: 12
    onSectionChanged: contentY = 0

    EqualizerCard {
        Layout.fillWidth: true
        visible: page.section === "tone"
        equalizer: page.studio.equalizer
    }
    SlidersCard {
        Layout.fillWidth: true
        visible: page.section === "tone"
        title: qsTr("Shape")
        rows: page.studio.shape.chain
        onMoved: (field, value) => page.studio.shape.setChain(field, value)
    }
    LayersCard {
        Layout.fillWidth: true
        visible: page.section === "layers"
        layers: page.studio.layers
    }
    PartsCard {
        Layout.fillWidth: true
        visible: page.section === "switch"
        rows: page.studio.parts.switchParts
        onPicked: (part, value) => page.studio.parts.setSwitchPart(part, value)
    }
    SlidersCard {
        Layout.fillWidth: true
        visible: page.section === "switch"
        title: qsTr("Character of this sound")
        rows: page.studio.shape.character
        onMoved: (field, value) => page.studio.shape.setCharacter(field, value)
    }
    BoardCards {
        Layout.fillWidth: true
        visible: page.section === "board"
        studio: page.studio
    }
}
