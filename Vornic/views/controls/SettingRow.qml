// A switch with its name and what it does.
import QtQuick
import QtQuick.Layouts
import Vornic

RowLayout {
    id: row

    required property string title
    property string note: ""
    property alias checked: toggle.checked
    signal toggled(bool on)

    spacing: Theme.margin
    ColumnLayout {
        Layout.fillWidth: true
        spacing: 2
        Label {
            Layout.fillWidth: true
            text: row.title
        }
        Label {
            Layout.fillWidth: true
            visible: text !== ""
            text: row.note
            secondary: true
            font.pixelSize: Theme.small
        }
    }
    Toggle {
        id: toggle
        Layout.alignment: Qt.AlignTop
        Accessible.name: row.title
        Accessible.description: row.note
        onToggled: row.toggled(checked)
    }
}
