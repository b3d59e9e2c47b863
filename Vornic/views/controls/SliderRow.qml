// A slider with its name and its value.
import QtQuick
import QtQuick.Layouts
import Vornic

RowLayout {
    id: row

    required property string name
    property string unit: ""
    property int labelWidth: 84
    // Stands for the value where there is no single one.
    property string instead: ""
    property int decimals: unit === "Hz" ? 0 : unit === "" ? 2 : 1
    property alias from: slider.from
    property alias to: slider.to
    property alias origin: slider.origin
    property alias value: slider.value
    signal moved(real value)

    spacing: Theme.gap
    Label {
        Layout.preferredWidth: row.labelWidth
        text: row.name
        elide: Text.ElideRight
        wrapMode: Text.NoWrap
    }
    ValueSlider {
        id: slider
        Layout.fillWidth: true
        Accessible.name: row.name
        onMoved: row.moved(value)
    }
    Label {
        Layout.preferredWidth: 72
        horizontalAlignment: Text.AlignRight
        text: row.instead !== "" && !slider.pressed ? row.instead : slider.value.toFixed(row.decimals) + (row.unit === "" ? "" : " " + row.unit)
        secondary: true
        wrapMode: Text.NoWrap
    }
}
