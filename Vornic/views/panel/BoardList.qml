// Every board there is; scrolls when there are many. One stop for the keyboard: arrow keys go from
// board to board, Space and Return pick.
import QtQuick
import QtQuick.Controls.Basic
import Vornic

ListView {
    id: list

    required property BoardListModel boards
    property bool details: false
    signal picked(string id)

    // Six rows, then it scrolls.
    property int most: 6
    implicitHeight: Math.min(contentHeight, most * (details ? 46 : 36))
    clip: true
    boundsBehavior: Flickable.StopAtBounds
    model: boards
    keyNavigationEnabled: true
    activeFocusOnTab: count > 0
    currentIndex: boards.currentRow
    Accessible.role: Accessible.List
    Accessible.name: qsTr("Keyboard")
    ScrollBar.vertical: ScrollBar { Accessible.ignored: true; policy: list.contentHeight > list.height ? ScrollBar.AlwaysOn : ScrollBar.AlwaysOff }

    function pick() {
        if (currentItem)
            picked(currentItem.boardId);
    }
    // It gives way where there is little room, and shows what is current all the same.
    onHeightChanged: Qt.callLater(positionViewAtIndex, currentIndex, ListView.Contain)
    Keys.onSpacePressed: pick()
    Keys.onReturnPressed: pick()
    Keys.onEnterPressed: pick()
    Connections {
        target: list.boards
        // The arrow keys have moved on from it.
        function onCurrentRowChanged() {
            list.currentIndex = list.boards.currentRow;
        }
    }

    delegate: BoardRow {
        width: list.width - (list.contentHeight > list.height ? 12 : 0)
        detail: list.details ? description : ""
        required property string description
        onPicked: id => list.picked(id)
        marked: list.activeFocus && ListView.isCurrentItem
        required property int index
    }
}
