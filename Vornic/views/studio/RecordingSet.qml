// Recordings that go together: all at once, or, opened, one by one.
import QtQuick
import QtQuick.Layouts
import Vornic

ColumnLayout {
    id: set

    required property var modelData
    required property var chosen
    property bool open: false
    readonly property int used: modelData.ids.filter(id => chosen.includes(id)).length
    signal picked(var ids, bool on)
    signal played(string id)

    spacing: 4
    RowLayout {
        Layout.fillWidth: true
        spacing: 6
        Tile {
            Layout.fillWidth: true
            exclusive: false
            text: set.modelData.text
            note: set.used > 0 ? qsTr("%1 of %2 chosen").arg(set.used).arg(set.modelData.ids.length)
                : set.modelData.ids.length === 1 ? qsTr("1 recording")
                : qsTr("%1 recordings").arg(set.modelData.ids.length)
            chosen: set.used > 0
            onClicked: set.picked(set.modelData.ids, set.used < set.modelData.ids.length)
        }
        PushButton {
            symbol: "play"
            Accessible.name: qsTr("Play %1").arg(set.modelData.text)
            onClicked: set.played(set.modelData.ids[0])
        }
        PushButton {
            symbol: set.open ? "caret-up" : "caret-down"
            Accessible.name: qsTr("Show the recordings of %1").arg(set.modelData.text)
            onClicked: set.open = !set.open
        }
    }
    Repeater {
        model: set.open ? set.modelData.ids : []
        delegate: RowLayout {
            id: line

            required property string modelData
            required property int index

            Layout.fillWidth: true
            Layout.leftMargin: 16
            spacing: 6
            Tile {
                Layout.fillWidth: true
                implicitHeight: 30
                padding: 6
                exclusive: false
                text: set.modelData.names[line.index]
                chosen: set.chosen.includes(line.modelData)
                onClicked: set.picked([line.modelData], !chosen)
            }
            PushButton {
                symbol: "play"
                Accessible.name: qsTr("Play %1").arg(set.modelData.names[line.index])
                onClicked: set.played(line.modelData)
            }
        }
    }
}
