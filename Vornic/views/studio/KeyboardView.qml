// The board's keyboard to scale. A click selects a key, with Shift or Control it adds one, a drag
// selects all keys that it touches; arrow keys go from key to key, Space selects or leaves one out,
// Return selects it alone.
import QtQuick
import Vornic

FocusScope {
    id: board

    required property KeyboardAdapter keyboard
    required property LiveKeyboard live
    readonly property real unit: picture.unit
    readonly property real bezel: picture.bezel
    // Where the arrow keys are.
    property int cursor: -1

    function heightFor(width: real): real {
        return picture.source && live.layoutWidth > 0 ? picture.heightFor(width) : 0;
    }

    activeFocusOnTab: true
    Accessible.role: Accessible.Grouping
    Accessible.name: qsTr("Keyboard")
    Accessible.description: qsTr("Arrow keys go from key to key, Space selects.")
    Component.onCompleted: cursor = keyboard.neighbour(-1, 0, 0)

    function step(dx: int, dy: int, extend: bool) {
        cursor = keyboard.neighbour(cursor, dx, dy);
        if (extend)
            keyboard.selectKey(cursor, true);
    }
    Keys.onPressed: event => {
        const extend = (event.modifiers & Qt.ShiftModifier) !== 0;
        event.accepted = true;
        if (event.key === Qt.Key_Left)
            step(-1, 0, extend);
        else if (event.key === Qt.Key_Right)
            step(1, 0, extend);
        else if (event.key === Qt.Key_Up)
            step(0, -1, extend);
        else if (event.key === Qt.Key_Down)
            step(0, 1, extend);
        else if (event.key === Qt.Key_Space)
            keyboard.selectKey(cursor, true);
        else if (event.key === Qt.Key_Return || event.key === Qt.Key_Enter)
            keyboard.selectKey(cursor, false);
        else if (event.key === Qt.Key_Escape || event.key === Qt.Key_A && event.modifiers & Qt.ControlModifier)
            keyboard.selectAll();
        else
            event.accepted = false;
    }

    KeyboardPicture {
        id: picture
        anchors.fill: parent
        source: board.live
        tinted: true
        selected: board.keyboard.selected
        colours: Theme.soundColours
        still: Theme.still
    }
    MouseArea {
        id: mouse

        property point begin
        property bool dragging: false

        function adds(event: MouseEvent): bool {
            return (event.modifiers & (Qt.ShiftModifier | Qt.ControlModifier)) !== 0;
        }

        anchors.fill: parent
        preventStealing: true
        onPressed: event => {
            begin = Qt.point(event.x, event.y);
            dragging = false;
            const code = picture.keyAt(event.x, event.y);
            if (code >= 0) {
                board.cursor = code;
                board.live.play(code);
            }
        }
        onPositionChanged: event => {
            dragging = dragging || Math.abs(event.x - begin.x) + Math.abs(event.y - begin.y) > 6;
        }
        onReleased: event => {
            if (dragging)
                board.keyboard.selectWithin((band.x - board.bezel) / board.unit, (band.y - board.bezel) / board.unit,
                                            band.width / board.unit, band.height / board.unit, adds(event));
            else if (picture.keyAt(event.x, event.y) >= 0)
                board.keyboard.selectKey(board.cursor, adds(event));
            else
                board.keyboard.selectAll();
            dragging = false;
        }
        onCanceled: dragging = false
    }
    Repeater {
        model: board.keyboard.rows
        delegate: KeyCap {
            focus: row.code >= 0 && row.code === board.cursor
            onPressed: board.live.play(row.code)
            x: board.bezel + row.x * board.unit
            y: board.bezel + row.y * board.unit
            width: row.w * board.unit
            height: row.h * board.unit
        }
    }
    Rectangle {
        id: band
        visible: mouse.dragging
        x: Math.min(mouse.begin.x, mouse.mouseX)
        y: Math.min(mouse.begin.y, mouse.mouseY)
        width: Math.abs(mouse.mouseX - mouse.begin.x)
        height: Math.abs(mouse.mouseY - mouse.begin.y)
        radius: 3
        color: Qt.alpha(Theme.focus, 0.15)
        border.color: Theme.focus
    }
}
