// One end of a cut, moved by mouse or by the arrow keys. Stands on `share` of its parent's width.
import QtQuick
import Vornic

Item {
    id: handle

    property real share: 0
    property string name: ""
    property bool atEnd: false
    readonly property bool visualFocus: activeFocus
    signal movedTo(real share)
    signal nudged(real millis)

    x: share * parent.width - width / 2
    width: 13
    height: parent.height
    activeFocusOnTab: true
    Accessible.role: Accessible.Slider
    Accessible.name: name
    Accessible.focusable: true
    Accessible.onIncreaseAction: nudged(1)
    Accessible.onDecreaseAction: nudged(-1)
    Keys.onPressed: event => {
        const step = event.modifiers & Qt.ShiftModifier ? 10 : 1;
        if (event.key === Qt.Key_Left || event.key === Qt.Key_Right) {
            nudged(event.key === Qt.Key_Left ? -step : step);
            event.accepted = true;
        }
    }

    Rectangle {
        anchors.horizontalCenter: parent.horizontalCenter
        width: 2
        height: parent.height
        color: mouse.containsMouse || handle.activeFocus ? Theme.text : Theme.secondary
    }
    Rectangle {
        anchors.horizontalCenter: parent.horizontalCenter
        y: handle.atEnd ? parent.height - height : 0
        width: 9
        height: 9
        radius: 2
        color: mouse.containsMouse || handle.activeFocus ? Theme.text : Theme.secondary
    }
    FocusRing {
        control: handle
        anchors.margins: 0
    }
    MouseArea {
        id: mouse
        anchors.fill: parent
        hoverEnabled: true
        cursorShape: Qt.SplitHCursor
        preventStealing: true
        onPositionChanged: event => {
            if (pressed)
                handle.movedTo(mapToItem(handle.parent, event.x, 0).x / handle.parent.width);
        }
    }
}
