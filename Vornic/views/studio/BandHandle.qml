// One band of the tone control: dragged up and down, or moved by the arrow keys; a double click puts
// it back to nothing. Its foot names it.
import QtQuick
import QtQuick.Controls.Basic
import Vornic

Slider {
    id: band

    required property var row
    required property int foot
    required property real range
    required property real shown
    readonly property real perDb: (height - foot) / (2 * shown)

    signal moved(real gain)

    orientation: Qt.Vertical
    from: -range
    to: range
    stepSize: 0.5
    value: row.gain
    padding: 0
    focusPolicy: Qt.TabFocus
    hoverEnabled: true
    Accessible.name: row.text
    Accessible.description: row.hint
    Accessible.onIncreaseAction: band.moved(band.row.gain + 0.5)
    Accessible.onDecreaseAction: band.moved(band.row.gain - 0.5)
    Keys.onPressed: event => {
        const step = event.modifiers & Qt.ShiftModifier ? 0.1 : 0.5;
        event.accepted = true;
        if (event.key === Qt.Key_Up || event.key === Qt.Key_Right)
            moved(row.gain + step);
        else if (event.key === Qt.Key_Down || event.key === Qt.Key_Left)
            moved(row.gain - step);
        else if (event.key === Qt.Key_PageUp || event.key === Qt.Key_PageDown)
            moved(row.gain + (event.key === Qt.Key_PageUp ? 3 : -3));
        else if (event.key === Qt.Key_Home || event.key === Qt.Key_End)
            moved(event.key === Qt.Key_Home ? -range : range);
        else if (event.key === Qt.Key_Delete || event.key === Qt.Key_Backspace)
            moved(0);
        else
            event.accepted = false;
    }
    Hint {
        text: band.row.hint
        wanted: band.hovered && !mouse.pressed
    }

    background: null
    handle: Rectangle {
        x: (band.width - width) / 2
        y: (band.shown - band.row.gain) * band.perDb - height / 2
        width: 20
        height: 20
        radius: 10
        color: Theme.raised
        border.width: 2
        border.color: mouse.pressed || band.hovered ? Theme.text : Theme.graph
        Label {
            anchors.horizontalCenter: parent.horizontalCenter
            y: band.row.gain > 8 ? 22 : -18
            visible: mouse.pressed || band.hovered || band.visualFocus || band.row.gain !== 0
            text: (band.row.gain > 0 ? "+" : band.row.gain < 0 ? "−" : "") + Math.abs(band.row.gain).toFixed(1)
            font.pixelSize: Theme.small
            wrapMode: Text.NoWrap
            Accessible.ignored: true
        }
        FocusRing {
            control: band
            radius: height / 2
        }
    }
    Label {
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.bottom: parent.bottom
        text: band.row.text
        secondary: true
        font.pixelSize: Theme.small
        wrapMode: Text.NoWrap
        Accessible.ignored: true
    }
    // In front of the slider's own mouse: a press beside the handle must not make it jump.
    MouseArea {
        id: mouse

        property real pressedY
        property real pressedGain

        anchors.fill: parent
        preventStealing: true
        cursorShape: Qt.SizeVerCursor
        onPressed: event => {
            pressedY = event.y;
            pressedGain = band.row.gain;
        }
        onPositionChanged: event => {
            if (event.y !== pressedY)
                band.moved(Math.round((pressedGain - (event.y - pressedY) / band.perDb) * 10) / 10);
        }
        onDoubleClicked: {
            band.moved(0);
            pressedGain = 0;
        }
    }
}
