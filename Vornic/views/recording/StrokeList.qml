// The strokes to choose from. They are few, and all of them are there, so that Tab reaches each.
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Window
import Vornic

Flickable {
    id: list

    required property RecordingAdapter recorder

    // Whoever moves by Tab sees where.
    function show(item) {
        for (let above = item; above; above = above.parent) {
            if (above === rows) {
                const top = item.mapToItem(rows, 0, 0).y - Theme.gap;
                const bottom = top + item.height + 2 * Theme.gap;
                contentY = Math.max(0, Math.min(top, Math.max(contentY, bottom - height)));
                return;
            }
        }
    }

    implicitHeight: contentHeight
    contentHeight: rows.height
    clip: true
    boundsBehavior: Flickable.StopAtBounds
    ScrollBar.vertical: ScrollBar {}

    Column {
        id: rows
        width: list.width - 14
        spacing: 6
        Repeater {
            model: list.recorder.strokes
            delegate: StrokeRow {
                width: rows.width
                height: 48
                recorder: list.recorder
            }
        }
    }
    Connections {
        target: list.Window.window
        function onActiveFocusItemChanged() {
            list.show(list.Window.window.activeFocusItem);
        }
    }
}
