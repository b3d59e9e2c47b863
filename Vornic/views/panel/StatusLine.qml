// Whether keys sound, and if not, why.
import QtQuick
import QtQuick.Layouts
import Vornic

RowLayout {
    required property ModelAdapter app

    spacing: Theme.gap
    visible: app.tapState === "listening"
    Symbol { symbol: ({ "microphone": "mic", "password": "lock", "recording": "waveform" })[app.silence] ?? "check-circle" }
    Label {
        Layout.fillWidth: true
        text: app.silence === "" || app.silence === "off" ? qsTr("Listening") : app.subtitle
    }
}
