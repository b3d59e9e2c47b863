// The five bands of the tone control, with presets.
import QtQuick
import QtQuick.Layouts
import Vornic

Card {
    id: card

    required property StudioSoundsAdapter soundsEditor

    RowLayout {
        Layout.fillWidth: true
        SectionTitle {
            Layout.fillWidth: true
            text: qsTr("Tone")
        }
        Dropdown {
            name: qsTr("Tone preset")
            options: card.soundsEditor.presets
            value: card.soundsEditor.preset
            displayText: currentIndex < 0 ? qsTr("Custom") : currentText
            onPicked: v => card.soundsEditor.applyPreset(v)
        }
    }
    Repeater {
        model: card.soundsEditor.bands
        delegate: SliderRow {
            required property var modelData

            Layout.fillWidth: true
            name: modelData.text
            unit: "dB"
            from: -12
            to: 12
            origin: 0
            value: modelData.gain
            onMoved: v => card.soundsEditor.setBand(modelData.value, v)
        }
    }
    Item { Layout.fillHeight: true }
}
