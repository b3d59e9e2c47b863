// One layer of a stroke.
import QtQuick
import QtQuick.Layouts
import Vornic

Rectangle {
    id: entry

    required property var row
    required property int index
    required property LayersAdapter layers
    signal choose()

    implicitHeight: lines.implicitHeight + 16
    radius: Theme.radius
    color: Theme.window
    border.color: Theme.line

    ColumnLayout {
        id: lines
        anchors.fill: parent
        anchors.margins: 8
        spacing: 6
        RowLayout {
            Layout.fillWidth: true
            spacing: 6
            Dropdown {
                Layout.preferredWidth: 132
                name: qsTr("Part of layer %1").arg(entry.index + 1)
                options: entry.layers.parts
                value: entry.row.part
                onPicked: v => entry.layers.setPart(entry.index, v)
            }
            PushButton {
                Layout.fillWidth: true
                Layout.preferredWidth: 100
                text: entry.row.summary
                Accessible.name: qsTr("Recordings of layer %1: %2").arg(entry.index + 1).arg(entry.row.summary)
                hint: qsTr("Choose recordings")
                onClicked: entry.choose()
            }
            Repeater {
                model: [
                    { field: "invert", flag: LayersAdapter.Invert, text: "Ø", name: qsTr("Invert") },
                    { field: "mute", flag: LayersAdapter.Mute, text: "M", name: qsTr("Mute") },
                    { field: "solo", flag: LayersAdapter.Solo, text: "S", name: qsTr("Solo") }
                ]
                delegate: FlagButton {
                    required property var modelData

                    text: modelData.text
                    name: modelData.name
                    on: entry.row ? entry.row[modelData.field] : false
                    onClicked: entry.layers.setFlag(entry.index, modelData.flag, !on)
                }
            }
            PushButton {
                symbol: "caret-up"
                implicitHeight: 26
                enabled: entry.index > 0
                Accessible.name: qsTr("Move layer %1 up").arg(entry.index + 1)
                onClicked: entry.layers.move(entry.index, entry.index - 1)
            }
            PushButton {
                symbol: "caret-down"
                implicitHeight: 26
                enabled: entry.index < entry.layers.rows.count - 1
                Accessible.name: qsTr("Move layer %1 down").arg(entry.index + 1)
                onClicked: entry.layers.move(entry.index, entry.index + 1)
            }
            PushButton {
                symbol: "trash"
                implicitHeight: 26
                Accessible.name: qsTr("Delete layer %1").arg(entry.index + 1)
                onClicked: entry.layers.remove(entry.index)
            }
        }
        RowLayout {
            Layout.fillWidth: true
            spacing: 16
            Repeater {
                model: [
                    { field: "offset", number: LayersAdapter.Offset, text: qsTr("Offset"), unit: "ms", range: 50, step: 0.5 },
                    { field: "gain", number: LayersAdapter.Gain, text: qsTr("Gain"), unit: "dB", range: 24, step: 0.5 },
                    { field: "pitch", number: LayersAdapter.Pitch, text: qsTr("Pitch"), unit: "st", range: 12, step: 0.5 }
                ]
                delegate: CompactSlider {
                    required property var modelData

                    Layout.fillWidth: true
                    Layout.preferredWidth: 100
                    name: modelData.text
                    unit: modelData.unit
                    from: -modelData.range
                    to: modelData.range
                    origin: 0
                    stepSize: modelData.step
                    value: entry.row ? entry.row[modelData.field] : 0
                    onMoved: v => entry.layers.setNumber(entry.index, modelData.number, v)
                }
            }
        }
    }
}
