// A change between two ends, none of it in the middle. A double click takes it back.
import QtQuick
import QtQuick.Layouts
import Vornic

RowLayout {
    id: row

    required property string less
    required property string more
    required property real value
    signal moved(real value)

    spacing: 8
    Label {
        text: row.less
        secondary: true
        wrapMode: Text.NoWrap
    }
    ValueSlider {
        id: slider
        Layout.fillWidth: true
        implicitHeight: 26
        from: -1
        to: 1
        origin: 0
        resets: true
        value: row.value
        Accessible.name: row.more
        onMoved: row.moved(value)
    }
    Label {
        text: row.more
        wrapMode: Text.NoWrap
    }
}
