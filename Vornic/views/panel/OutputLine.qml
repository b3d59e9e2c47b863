// Where the sound comes out, and what Bluetooth does to it.
import QtQuick
import QtQuick.Layouts
import Vornic

ColumnLayout {
    required property Adapters app

    spacing: 4
    RowLayout {
        spacing: Theme.gap
        Symbol { symbol: app.status.headphones ? "headphones" : "speaker" }
        Label {
            Layout.fillWidth: true
            text: app.status.outputName
            elide: Text.ElideRight
            wrapMode: Text.NoWrap
        }
    }
    Label {
        Layout.fillWidth: true
        visible: app.status.onBluetooth
        text: qsTr("Bluetooth earphones add their own delay (about 0.2 s) that no app can remove. Wired earphones or the Mac's speakers play instantly.")
        secondary: true
        font.pixelSize: Theme.small
    }
}
