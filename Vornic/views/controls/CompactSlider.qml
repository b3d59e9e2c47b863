// A slider below its name and its value, for narrow places.
import QtQuick
import QtQuick.Layouts
import Vornic

ColumnLayout {
    id: row

    required property string name
    property string unit: ""
    property int decimals: 1
    property alias from: slider.from
    property alias to: slider.to
    property alias origin: slider.origin
    property alias value: slider.value
    property alias stepSize: slider.stepSize
    signal moved(real value)

    spacing: 0
    RowLayout {
        Layout.fillWidth: true
        Label {
            Layout.fillWidth: true
            text: row.name
            secondary: true
            font.pixelSize: Theme.small
            wrapMode: Text.NoWrap
            elide: Text.ElideRight
        }
        Label {
            text: slider.value.toFixed(row.decimals) + (row.unit === "" ? "" : " " + row.unit)
            font.pixelSize: Theme.small
            wrapMode: Text.NoWrap
        }
    }
    ValueSlider {
        id: slider
        Layout.fillWidth: true
        implicitHeight: 24
        Accessible.name: row.name
        onMoved: row.moved(value)
    }
}
