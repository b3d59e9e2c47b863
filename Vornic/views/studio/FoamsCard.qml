// What lies in the case.
import QtQuick
import QtQuick.Layouts
import Vornic

Card {
    id: card

    required property StudioSoundsAdapter soundsEditor

    SectionTitle { text: qsTr("Foam") }
    Repeater {
        model: card.soundsEditor.foams
        delegate: SettingRow {
            required property var modelData

            Layout.fillWidth: true
            title: modelData.text
            checked: modelData.now
            onToggled: on => card.soundsEditor.setFoam(modelData.value, on)
        }
    }
}
