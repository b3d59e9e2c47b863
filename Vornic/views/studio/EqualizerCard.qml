// The tone control: presets, and the curve that the five bands are dragged on.
import QtQuick
import QtQuick.Layouts
import Vornic

Card {
    id: card

    required property EqualizerAdapter equalizer

    RowLayout {
        Layout.fillWidth: true
        SectionTitle {
            Layout.fillWidth: true
            text: qsTr("Tone")
        }
        Dropdown {
            name: qsTr("Tone preset")
            options: card.equalizer.presets
            value: card.equalizer.preset
            displayText: currentIndex < 0 ? qsTr("Custom") : currentText
            onPicked: v => card.equalizer.applyPreset(v)
        }
    }
    Item {
        id: plot

        readonly property real range: card.equalizer.range
        // Beyond the range, so that a band at its end is not on the edge.
        readonly property real shown: range + 3

        Layout.fillWidth: true
        implicitHeight: 196
        ToneCurve {
            anchors.fill: parent
            anchors.bottomMargin: 22
            shown: plot.shown
            curve: card.equalizer.curve
            heard: card.equalizer.heardCurve
            curveColour: Theme.graph
            heardColour: Theme.secondary
            gridColour: Theme.line
            textSize: Theme.small
            Accessible.role: Accessible.Graphic
            Accessible.name: qsTr("Frequency curve")
        }
        Repeater {
            model: card.equalizer.bands
            delegate: BandHandle {
                x: row.x * plot.width - width / 2
                width: plot.width / 8
                height: plot.height
                foot: 22
                range: plot.range
                shown: plot.shown
                onMoved: gain => card.equalizer.setBand(row.value, gain)
            }
        }
    }
    Label {
        Layout.fillWidth: true
        text: qsTr("The dashed line is what is heard, with parts and character.")
        secondary: true
        font.pixelSize: Theme.small
    }
}
