// One line of what a button opens.
import QtQuick
import QtQuick.Controls.Basic
import Vornic

AbstractButton {
    id: entry

    property string symbol: ""

    implicitHeight: 34
    implicitWidth: 200
    focusPolicy: Qt.TabFocus
    hoverEnabled: true
    opacity: enabled ? 1 : 0.45
    Accessible.role: Accessible.MenuItem
    Accessible.name: text
    contentItem: Row {
        leftPadding: 8
        spacing: 10
        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            symbol: entry.symbol
        }
        Label {
            anchors.verticalCenter: parent.verticalCenter
            text: entry.text
            wrapMode: Text.NoWrap
            Accessible.ignored: true
        }
    }
    background: Rectangle {
        radius: Theme.radius - 2
        color: entry.hovered ? Theme.hover : "transparent"
        FocusRing {
            control: entry
            anchors.margins: 0
        }
    }
}
