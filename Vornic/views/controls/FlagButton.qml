// A small button that stays down: on or off.
import QtQuick
import QtQuick.Controls.Basic
import Vornic

AbstractButton {
    id: flag

    property bool on: false
    property string name: ""

    implicitHeight: 26
    implicitWidth: Math.max(30, caption.implicitWidth + 16)
    focusPolicy: Qt.TabFocus
    hoverEnabled: true
    Accessible.role: Accessible.CheckBox
    Accessible.name: name
    Accessible.onToggleAction: flag.clicked()
    Accessible.checkable: true
    Accessible.checked: on
    Hint { text: flag.name }

    contentItem: Text {
        id: caption
        text: flag.text
        textFormat: Text.PlainText
        color: flag.on ? Theme.accentInk : Theme.text
        font.pixelSize: Theme.small
        font.weight: Font.DemiBold
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        Accessible.ignored: true
    }
    background: Rectangle {
        radius: 6
        color: flag.on ? Theme.accent : flag.hovered ? Theme.hover : Theme.surface
        border.color: flag.on ? Theme.text : Theme.edge
        FocusRing {
            control: flag
            radius: 9
        }
    }
}
