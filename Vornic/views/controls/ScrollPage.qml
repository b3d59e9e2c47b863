// A page that scrolls, also to the control that the keyboard has come to.
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts

Flickable {
    id: page

    default property alias content: column.data
    property int padding: 24
    property alias spacing: column.spacing
    // Left between a control that the keyboard has come to and the page's edge.
    readonly property int margin: Math.max(padding, 8)
    // As tall as it would like to be.
    readonly property real wholeHeight: column.implicitHeight + 2 * padding

    // What it scrolls at: where something in it gives way, that is less.
    property real least: wholeHeight

    contentHeight: Math.max(least, Math.min(wholeHeight, height))
    boundsBehavior: Flickable.StopAtBounds
    clip: true
    ScrollBar.vertical: ScrollBar { Accessible.ignored: true; policy: page.contentHeight > page.height ? ScrollBar.AlwaysOn : ScrollBar.AlwaysOff }

    function showItem(item: Item) {
        let holder = item;
        while (holder && holder !== contentItem)
            holder = holder.parent;
        if (!holder)
            return;
        const top = item.mapToItem(contentItem, 0, 0).y - margin;
        const bottom = top + item.height + 2 * margin;
        if (top < contentY)
            contentY = Math.max(0, top);
        else if (bottom > contentY + height)
            contentY = Math.max(0, Math.min(contentHeight - height, bottom - height));
    }

    Connections {
        target: page.Window.window
        function onActiveFocusItemChanged() {
            const item = page.Window.activeFocusItem;
            if (item)
                page.showItem(item);
        }
    }
    ColumnLayout {
        id: column
        x: page.padding
        y: page.padding
        width: page.width - 2 * page.padding
        height: page.contentHeight - 2 * page.padding
        spacing: 16
    }
}
