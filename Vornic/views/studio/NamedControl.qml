// A control with its name before it and what it inherits below it.
import QtQuick
import QtQuick.Layouts
import Vornic

GridLayout {
    id: named

    required property string name
    property string note: ""
    default property alias control: place.data

    Layout.fillWidth: true
    Layout.preferredWidth: 300
    Layout.alignment: Qt.AlignTop
    columns: 2
    columnSpacing: Theme.gap
    rowSpacing: 0
    Label {
        Layout.preferredWidth: 60
        text: named.name
        wrapMode: Text.NoWrap
        elide: Text.ElideRight
    }
    Item {
        id: place
        Layout.fillWidth: true
        implicitHeight: Theme.control
    }
    Label {
        Layout.column: 1
        Layout.row: 1
        Layout.fillWidth: true
        visible: text !== ""
        text: named.note
        secondary: true
        font.pixelSize: Theme.small
        wrapMode: Text.NoWrap
        elide: Text.ElideRight
    }
}
