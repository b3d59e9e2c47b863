// A button that opens what is below it.
import QtQuick
import QtQuick.Controls.Basic
import Vornic

PushButton {
    id: button

    default property alias content: popup.contentItem
    property int wanted: 240
    readonly property bool opened: popup.visible

    function close() {
        popup.close();
    }
    Accessible.role: Accessible.ButtonMenu
    onClicked: popup.open()

    Popup {
        id: popup
        // Within the window, whichever side the button is on.
        onAboutToShow: x = Math.min(0, button.Window.width - button.mapToItem(null, 0, 0).x - width - 8)
        y: button.height + 4
        width: button.wanted
        padding: 6
        focus: true
        background: Rectangle {
            radius: Theme.radius
            color: Theme.surface
            border.color: Theme.edge
        }
    }
}
