// Which colour stands for which sound. A click selects the keys that play it.
import QtQuick
import QtQuick.Controls.Basic
import Vornic

Flow {
    id: legend

    required property RowsModel sounds
    signal picked(string id)

    spacing: 4
    Repeater {
        model: legend.sounds
        delegate: AbstractButton {
            id: entry

            required property var row

            implicitWidth: Math.min(220, line.implicitWidth + 16)
            implicitHeight: 26
            focusPolicy: Qt.TabFocus
            hoverEnabled: true
            Accessible.name: qsTr("Select the keys with %1").arg(row.text)
            Hint { text: entry.Accessible.name }
            onClicked: legend.picked(row.value)

            contentItem: Row {
                id: line
                leftPadding: 8
                spacing: 6
                SoundBadge {
                    anchors.verticalCenter: parent.verticalCenter
                    place: entry.row.colour
                    letter: entry.row.letter
                }
                Label {
                    anchors.verticalCenter: parent.verticalCenter
                    width: Math.min(implicitWidth, 186)
                    text: entry.row.text
                    secondary: true
                    font.pixelSize: Theme.small
                    wrapMode: Text.NoWrap
                    elide: Text.ElideRight
                    Accessible.ignored: true
                }
            }
            background: Rectangle {
                radius: Theme.radius
                color: entry.hovered ? Theme.hover : "transparent"
                FocusRing { control: entry }
            }
        }
    }
}
