// The board's keyboard to scale. A click selects a key, with Shift or Control it adds one, a drag
// selects all keys that it touches; arrow keys move on from key to key.
import QtQuick
import Vornic

FocusScope {
    id: board

    required property StudioKeysAdapter keysEditor
    readonly property real unit: width / Math.max(1, keysEditor.layoutWidth)

    activeFocusOnTab: true
    Accessible.role: Accessible.Grouping
    Accessible.name: qsTr("Keyboard")

    function codesWithin(x0: real, y0: real, x1: real, y1: real): var {
        return keysEditor.keys.filter(key => key.code >= 0
            && key.x * unit < Math.max(x0, x1) && (key.x + key.w) * unit > Math.min(x0, x1)
            && key.y * unit < Math.max(y0, y1) && (key.y + key.h) * unit > Math.min(y0, y1)).map(key => key.code);
    }
    // The key nearest to the selected one in a direction.
    function step(dx: int, dy: int) {
        const all = keysEditor.keys.filter(key => key.code >= 0);
        const from = all.find(key => key.selected) ?? all[0];
        const middle = key => ({ x: key.x + key.w / 2, y: key.y + key.h / 2 });
        const a = middle(from);
        let best = null, least = 1e9;
        for (const key of all) {
            const b = middle(key);
            const along = (b.x - a.x) * dx + (b.y - a.y) * dy;
            const across = Math.abs((b.x - a.x) * dy) + Math.abs((b.y - a.y) * dx);
            if (along > 0.2 && along + 3 * across < least) {
                least = along + 3 * across;
                best = key;
            }
        }
        if (best)
            keysEditor.selectKey(best.code, false);
    }
    Keys.onLeftPressed: step(-1, 0)
    Keys.onRightPressed: step(1, 0)
    Keys.onUpPressed: step(0, -1)
    Keys.onDownPressed: step(0, 1)

    MouseArea {
        id: mouse

        property point begin
        property bool dragging: false

        anchors.fill: parent
        onPressed: event => {
            begin = Qt.point(event.x, event.y);
            dragging = false;
            board.forceActiveFocus();
        }
        onPositionChanged: event => {
            dragging = dragging || Math.abs(event.x - begin.x) + Math.abs(event.y - begin.y) > 6;
        }
        onReleased: event => {
            const codes = board.codesWithin(begin.x, begin.y, event.x + 0.01, event.y + 0.01);
            if (dragging)
                board.keysEditor.selectKeys(codes);
            else if (codes.length > 0)
                board.keysEditor.selectKey(codes[0], (event.modifiers & (Qt.ShiftModifier | Qt.ControlModifier)) !== 0);
            dragging = false;
        }
    }
    Repeater {
        model: board.keysEditor.keys
        delegate: KeyCap {
            required property var modelData

            key: modelData
            lit: modelData.code >= 0 && modelData.code === board.keysEditor.litKey
            x: modelData.x * board.unit
            y: modelData.y * board.unit
            width: modelData.w * board.unit
            height: modelData.h * board.unit
        }
    }
    Rectangle {
        visible: mouse.dragging
        x: Math.min(mouse.begin.x, mouse.mouseX)
        y: Math.min(mouse.begin.y, mouse.mouseY)
        width: Math.abs(mouse.mouseX - mouse.begin.x)
        height: Math.abs(mouse.mouseY - mouse.begin.y)
        color: "transparent"
        border.color: Theme.focus
        border.width: 1
    }
    Rectangle {
        anchors.fill: parent
        anchors.margins: -4
        visible: board.activeFocus
        color: "transparent"
        radius: Theme.radius
        border.color: Theme.focus
    }
}
