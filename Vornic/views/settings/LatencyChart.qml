// How long the last keys took to sound: a bar for every millisecond.
import QtQuick
import QtQuick.Layouts
import Vornic

ColumnLayout {
    id: chart

    // Keys in each bin, the bins' width in milliseconds, and what they say in a line.
    property var bins: []
    property real binMillis: 1
    property string summary: ""
    readonly property int most: bins.reduce((largest, count) => Math.max(largest, count), 1)

    spacing: 4
    Label {
        Layout.fillWidth: true
        text: chart.summary
        secondary: true
        font.pixelSize: Theme.small
    }
    Item {
        id: field
        Layout.fillWidth: true
        implicitHeight: 56
        Accessible.role: Accessible.Chart
        Accessible.name: qsTr("Key to sound")
        Accessible.description: chart.summary

        Repeater {
            model: chart.bins.length
            delegate: Rectangle {
                required property int index

                readonly property int count: chart.bins[index]

                x: index * field.width / chart.bins.length + 1
                width: field.width / chart.bins.length - 2
                height: count === 0 ? 1 : Math.max(3, (field.height - 4) * count / chart.most)
                y: field.height - height
                radius: Math.min(2, height / 2)
                color: count === 0 ? Theme.line : Theme.accent
                border.color: count === 0 ? "transparent" : Theme.secondary
                border.width: count === 0 ? 0 : 1
            }
        }
    }
    RowLayout {
        Label {
            Layout.fillWidth: true
            text: qsTr("0 ms")
            secondary: true
            font.pixelSize: Theme.small
        }
        Label {
            text: qsTr("%1 ms and more").arg(chart.binMillis * (chart.bins.length - 1))
            secondary: true
            font.pixelSize: Theme.small
        }
    }
}
