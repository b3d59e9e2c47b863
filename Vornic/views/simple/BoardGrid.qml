// Every board as a card, in columns; scrolls by itself when there are many.
import QtQuick
import QtQuick.Controls.Basic
import Vornic

Flickable {
    id: grid

    required property Adapters app
    property bool compact: false
    property int columns: 2
    property int rows: 3
    readonly property int gap: 8
    readonly property int cardHeight: compact ? 44 : 60
    readonly property bool scrolls: Math.ceil(cards.count / columns) > rows
    readonly property real cardWidth: (width - (scrolls ? 12 : 0) - gap * (columns - 1)) / columns

    implicitHeight: Math.min(rows, Math.max(1, Math.ceil(cards.count / columns))) * (cardHeight + gap) - gap
                    + (scrolls ? cardHeight / 2 : 0)
    contentHeight: flow.implicitHeight
    clip: scrolls
    boundsBehavior: Flickable.StopAtBounds
    ScrollBar.vertical: ScrollBar { Accessible.ignored: true; policy: grid.scrolls ? ScrollBar.AlwaysOn : ScrollBar.AlwaysOff }

    // Whatever has the keyboard, and the board that plays, is in sight.
    function showRow(index: int) {
        const top = Math.floor(index / columns) * (cardHeight + gap);
        if (top < contentY)
            contentY = top;
        else if (top + cardHeight > contentY + height)
            contentY = Math.min(contentHeight - height, top + cardHeight - height);
    }
    readonly property int current: app.board.boards.currentRow
    onCurrentChanged: if (current >= 0) showRow(current)
    onHeightChanged: if (current >= 0) showRow(current)

    Grid {
        id: flow
        columns: grid.columns
        spacing: grid.gap
        Accessible.role: Accessible.Grouping
        Accessible.name: qsTr("Keyboard")
        Repeater {
            id: cards
            model: grid.app.board.boards
            delegate: BoardCard {
                id: card

                required property int index

                compact: grid.compact
                width: grid.cardWidth
                height: grid.cardHeight
                onActiveFocusChanged: if (activeFocus) grid.showRow(index)
                onPicked: grid.app.board.select(boardId)
                onPlayed: {
                    grid.app.board.select(boardId);
                    grid.app.board.playPhrase();
                }
            }
        }
    }
}
