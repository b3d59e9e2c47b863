// A slider with its name, its value, and what lies below that value.
import QtQuick
import QtQuick.Layouts
import Vornic

ColumnLayout {
    id: noted

    property alias name: line.name
    property alias unit: line.unit
    property alias from: line.from
    property alias to: line.to
    property alias origin: line.origin
    property alias value: line.value
    property alias instead: line.instead
    property string note: ""
    signal moved(real value)

    Layout.fillWidth: true
    Layout.preferredWidth: 300
    Layout.alignment: Qt.AlignTop
    spacing: 0
    SliderRow {
        id: line
        Layout.fillWidth: true
        labelWidth: 48
        onMoved: v => noted.moved(v)
    }
    Label {
        Layout.fillWidth: true
        Layout.leftMargin: 56
        visible: text !== ""
        text: noted.note
        secondary: true
        font.pixelSize: Theme.small
        wrapMode: Text.NoWrap
        elide: Text.ElideRight
    }
}
