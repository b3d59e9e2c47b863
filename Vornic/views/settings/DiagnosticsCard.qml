// How well the program does here, brought up to date every second.
import QtQuick
import QtQuick.Layouts
import Vornic

Card {
    id: card

    required property DiagnosticsAdapter diagnostics

    Repeater {
        model: card.diagnostics.rows
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
        bins: card.diagnostics.latencyBins
        binMillis: card.diagnostics.latencyBinMillis
        summary: card.diagnostics.latencySummary
    }
    PushButton {
        text: qsTr("Reset")
        onClicked: card.diagnostics.reset()
    }
}
