// The keyboard, and what the selected keys play.
import QtQuick
import QtQuick.Layouts
import Vornic

ColumnLayout {
    id: tab

    required property StudioKeysAdapter keysEditor
    // From outside: a height that follows from a width that the layout gives comes too late for it.
    required property real keyboardWidth

    spacing: 12
    RowLayout {
        spacing: Theme.gap
        Dropdown {
            name: qsTr("Keyboard layout")
            options: tab.keysEditor.layouts
            value: tab.keysEditor.layout
            onPicked: v => tab.keysEditor.layout = v
        }
        Item { Layout.fillWidth: true }
        Dropdown {
            name: qsTr("Select a group of keys")
            options: tab.keysEditor.groups
            value: tab.keysEditor.group
            displayText: currentIndex < 0 ? qsTr("Select a group") : currentText
            onPicked: v => tab.keysEditor.selectGroup(v)
        }
        PushButton {
            text: qsTr("All keys")
            onClicked: tab.keysEditor.selectAll()
        }
    }
    KeyboardView {
        Layout.fillWidth: true
        Layout.preferredHeight: keysEditor.layoutHeight * tab.keyboardWidth / Math.max(1, keysEditor.layoutWidth)
        keysEditor: tab.keysEditor
    }
    SoundLegend {
        Layout.fillWidth: true
        sounds: tab.keysEditor.sounds
    }
    KeyInspector {
        Layout.fillWidth: true
        keysEditor: tab.keysEditor
    }
    Item { Layout.fillHeight: true }
}
