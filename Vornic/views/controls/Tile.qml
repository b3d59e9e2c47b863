// One of several choices with a line about it; the chosen one is outlined. `exclusive` says whether
// it is one of a few or goes on and off by itself.
import QtQuick
import QtQuick.Controls.Basic
import Vornic

AbstractButton {
    id: tile

    property string note: ""
    property bool chosen: false
    property bool exclusive: true

    implicitHeight: 50
    implicitWidth: 136
    padding: 8
    focusPolicy: Qt.TabFocus
    hoverEnabled: true
    Accessible.role: exclusive ? Accessible.RadioButton : Accessible.CheckBox
    Accessible.name: text
    Accessible.onToggleAction: tile.clicked()
    Accessible.description: note
    Accessible.checkable: true
    Accessible.checked: chosen
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    contentItem: Column {
        spacing: 1
        Label {
            width: parent.width
            text: tile.text
            font.weight: tile.chosen ? Font.DemiBold : Font.Normal
            wrapMode: Text.NoWrap
            elide: Text.ElideRight
            Accessible.ignored: true
        }
        Label {
            width: parent.width
            visible: text !== ""
            text: tile.note
            secondary: true
            font.pixelSize: Theme.small
            wrapMode: Text.NoWrap
            elide: Text.ElideRight
            Accessible.ignored: true
        }
    }
    background: Rectangle {
        radius: Theme.radius
        color: tile.chosen ? Theme.selected : tile.hovered ? Theme.hover : Theme.surface
        border.width: tile.chosen ? 2 : 1
        border.color: tile.chosen ? Theme.focus : Theme.edge
        FocusRing { control: tile }
    }
}
