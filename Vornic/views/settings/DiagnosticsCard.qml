// How well the program does here, brought up to date every second.
import QtQuick
import QtQuick.Layouts
import Vornic

Card {
    id: card

    required property ModelAdapter app

    Repeater {
        model: card.app.diagnostics
        delegate: RowLayout {
            required property var modelData

            Layout.fillWidth: true
            Label {
                Layout.fillWidth: true
                text: modelData.name
            }
            Label {
                text: modelData.value
                secondary: true
            }
        }
    }
    LatencyChart {
        Layout.fillWidth: true
        bins: card.app.latencyBins
        binMillis: card.app.latencyBinMillis
        summary: card.app.latencySummary
    }
    PushButton {
        text: qsTr("Reset")
        onClicked: card.app.resetLatency()
    }
}
