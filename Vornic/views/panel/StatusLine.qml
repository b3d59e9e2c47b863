// Whether keys sound, and if not, why.
import QtQuick
import QtQuick.Layouts
import Vornic

RowLayout {
    required property ModelAdapter app
    // The switch above it says "off" already.
    readonly property bool quiet: app.silence !== "" && app.silence !== "off"

    spacing: Theme.gap
    visible: app.tapState === "listening"
    Symbol { symbol: parent.quiet ? app.silenceSymbol : "check-circle" }
    Label {
        Layout.fillWidth: true
        text: parent.quiet ? app.subtitle : qsTr("Listening")
    }
}
