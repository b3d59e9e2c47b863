// The keyboard, and what the selected keys play.
import QtQuick
import QtQuick.Layouts
import Vornic

ScrollPage {
    id: tab

    required property StudioAdapter studio
    required property LiveKeyboard live

    padding: 0
    spacing: 12

    // What is not seen is not computed.
    Binding { target: tab.studio.keyboard; property: "seen"; value: tab.visible }
    Binding { target: tab.studio.inspector; property: "seen"; value: tab.visible }

    RowLayout {
        spacing: Theme.gap
        Dropdown {
            name: qsTr("Keyboard layout")
            options: tab.studio.keyboard.layouts
            value: tab.studio.keyboard.layout
            onPicked: v => tab.studio.keyboard.layout = v
        }
        Item { Layout.fillWidth: true }
        Dropdown {
            name: qsTr("Select a group of keys")
            options: tab.studio.keyboard.groups
            value: tab.studio.keyboard.group
            displayText: currentIndex < 0 ? qsTr("Select a group") : currentText
            onPicked: v => tab.studio.keyboard.selectGroup(v)
        }
        PushButton {
            text: qsTr("Stabilised keys")
            prominent: tab.studio.keyboard.stabilisersSelected
            onClicked: tab.studio.keyboard.selectStabilisers()
        }
        PushButton {
            text: qsTr("All keys")
            prominent: tab.studio.keyboard.allSelected
            onClicked: tab.studio.keyboard.selectAll()
        }
    }
    KeyboardView {
        Layout.fillWidth: true
        // From the tab's width: one that follows from what the layout gives comes too late.
        Layout.preferredHeight: heightFor(tab.width)
        keyboard: tab.studio.keyboard
        live: tab.live
    }
    SoundLegend {
        Layout.fillWidth: true
        sounds: tab.studio.sounds.rows
        onPicked: id => tab.studio.keyboard.selectSound(id)
    }
    KeyInspector {
        Layout.fillWidth: true
        studio: tab.studio
    }
}
