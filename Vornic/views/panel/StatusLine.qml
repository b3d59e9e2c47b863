// Whether keys sound, and if not, why.
import QtQuick
import QtQuick.Layouts
import Vornic

RowLayout {
    required property Adapters app

    spacing: Theme.gap
    visible: app.status.listening
    Symbol { symbol: app.status.symbol }
    Label {
        Layout.fillWidth: true
        text: app.status.line
    }
}
