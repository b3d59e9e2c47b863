// A switch: on or off, at once.
import QtQuick
import QtQuick.Controls.Basic
import Vornic

Switch {
    id: toggle

    property string hint: ""

    implicitWidth: 44
    implicitHeight: 26
    padding: 0
    focusPolicy: Qt.TabFocus
    hoverEnabled: true
    opacity: enabled ? 1 : 0.45
    // A screen reader's own way to switch would change the picture only.
    Accessible.onToggleAction: {
        toggle.toggle();
        toggle.toggled();
    }
    Hint { text: toggle.hint }

    indicator: Rectangle {
        width: 44
        height: 26
        radius: height / 2
        color: toggle.checked ? Theme.accent : Theme.track
        border.color: toggle.checked ? Theme.edge : Theme.secondary
        border.width: 1
        Behavior on color { ColorAnimation { duration: Theme.quick } }

        Rectangle {
            x: toggle.checked ? parent.width - width - 3 : 3
            anchors.verticalCenter: parent.verticalCenter
            width: 20
            height: 20
            radius: 10
            color: toggle.checked ? Theme.accentInk : Theme.secondary
            Behavior on x { NumberAnimation { duration: Theme.quick } }
        }
        FocusRing {
            control: toggle
            radius: height / 2
        }
    }
    contentItem: Item {}
}
