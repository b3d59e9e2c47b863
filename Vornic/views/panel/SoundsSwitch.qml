// Switches the sounds of all keys.
import QtQuick
import Vornic

Toggle {
    required property Adapters app

    checked: app.settings.soundsOn
    Accessible.name: hint
    hint: qsTr("Sounds on or off (⌥⌘K)")
    onToggled: app.settings.soundsOn = checked
}
