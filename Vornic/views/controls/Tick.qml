// A box to tick.
import QtQuick
import QtQuick.Controls.Basic
import Vornic

CheckBox {
    id: box

    padding: 0
    focusPolicy: Qt.TabFocus
    hoverEnabled: true
    // A screen reader's own way to tick would change the picture only.
    Accessible.onToggleAction: {
        box.toggle();
        box.toggled();
    }

    indicator: Rectangle {
        anchors.centerIn: parent
        width: 20
        height: 20
        radius: 5
        color: box.checked ? Theme.accent : Theme.surface
        border.color: box.checked ? Theme.edge : box.hovered ? Theme.text : Theme.secondary
        Symbol {
            anchors.centerIn: parent
            visible: box.checked
            symbol: "check"
            size: 14
            color: Theme.accentInk
        }
        FocusRing { control: box }
    }
    contentItem: Item {
        implicitWidth: 24
        implicitHeight: 24
    }
}
