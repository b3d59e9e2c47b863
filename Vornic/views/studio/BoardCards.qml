// What all sounds of the board share.
import QtQuick
import QtQuick.Layouts
import Vornic

ColumnLayout {
    id: cards

    required property StudioAdapter studio

    spacing: 12
    Card {
        Layout.fillWidth: true
        SettingRow {
            Layout.fillWidth: true
            title: qsTr("Hear keys come up")
            note: qsTr("Plays the release wherever a key or its group leaves it open.")
            checked: cards.studio.parts.releaseByDefault
            onToggled: on => cards.studio.parts.releaseByDefault = on
        }
    }
    PartsCard {
        Layout.fillWidth: true
        rows: cards.studio.parts.buildParts
        onPicked: (part, value) => cards.studio.parts.setBuildPart(part, value)

        SliderRow {
            Layout.fillWidth: true
            name: qsTr("Rattle")
            from: 0
            to: 1
            value: cards.studio.parts.rattle
            onMoved: v => cards.studio.parts.rattle = v
        }
    }
    FoamsCard {
        Layout.fillWidth: true
        parts: cards.studio.parts
    }
    SlidersCard {
        Layout.fillWidth: true
        title: qsTr("Character of the board")
        rows: cards.studio.shape.boardCharacter
        onMoved: (place, value) => cards.studio.shape.setBoardCharacter(place, value)
    }
    SlidersCard {
        Layout.fillWidth: true
        title: qsTr("Typing")
        rows: cards.studio.shape.feel
        onMoved: (place, value) => cards.studio.shape.setFeel(place, value)
    }
}
