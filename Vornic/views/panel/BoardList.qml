// Every board there is; scrolls when there are many.
import QtQuick
import QtQuick.Controls.Basic
import Vornic

ListView {
    id: list

    required property var boards
    property bool details: false
    signal picked(string id)

    // Six rows, then it scrolls.
    property int most: 6
    implicitHeight: Math.min(contentHeight, most * (details ? 46 : 36))
    clip: true
    boundsBehavior: Flickable.StopAtBounds
    model: boards
    keyNavigationEnabled: true
    activeFocusOnTab: false
    Accessible.role: Accessible.List
    Accessible.name: qsTr("Keyboard")
    ScrollBar.vertical: ScrollBar { policy: list.contentHeight > list.height ? ScrollBar.AlwaysOn : ScrollBar.AlwaysOff }

    delegate: BoardRow {
        width: list.width - (list.contentHeight > list.height ? 12 : 0)
        detail: list.details ? description : ""
        required property string description
        onPicked: id => list.picked(id)
        onActiveFocusChanged: if (activeFocus) list.positionViewAtIndex(index, ListView.Contain)
        required property int index
    }
}
