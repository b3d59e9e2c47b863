// One sound of the board, with how many keys play it.
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Vornic

AbstractButton {
    id: entry

    required property var row
    property bool ring: false

    implicitHeight: 44
    padding: 8
    hoverEnabled: true
    focusPolicy: Qt.NoFocus
    Accessible.role: Accessible.ListItem
    Accessible.name: row.text
    Accessible.selectable: true
    Accessible.selected: row.current

    contentItem: RowLayout {
        spacing: 8
        SoundBadge {
            place: entry.row.colour
            letter: entry.row.letter
        }
        ColumnLayout {
            Layout.fillWidth: true
            spacing: 0
            Label {
                Layout.fillWidth: true
                text: entry.row.text
                font.weight: entry.row.current ? Font.DemiBold : Font.Normal
                wrapMode: Text.NoWrap
                elide: Text.ElideRight
                Accessible.ignored: true
            }
            Label {
                Layout.fillWidth: true
                text: entry.row.keys === 0 ? qsTr("On no key")
                    : entry.row.keys === 1 ? qsTr("1 key") : qsTr("%1 keys").arg(entry.row.keys)
                secondary: true
                font.pixelSize: Theme.small
                wrapMode: Text.NoWrap
                elide: Text.ElideRight
            }
        }
    }
    background: Rectangle {
        radius: Theme.radius
        color: entry.row.current ? Theme.selected : entry.hovered ? Theme.hover : "transparent"
        border.width: entry.ring ? 3 : entry.row.current ? 1 : 0
        border.color: Theme.focus
    }
}
