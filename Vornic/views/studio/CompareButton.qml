// Plays the version that the user started with instead of the changed one: while it is held, or,
// after a short click, until the next one.
import QtQuick
import Vornic

PushButton {
    id: button

    required property Adapters app
    // Whether it was down for so long that letting go ends it.
    property bool held: false
    property bool before: false

    function begin() {
        held = false;
        before = app.board.comparing;
        app.board.comparing = !before;
        holdTimer.restart();
    }
    function end() {
        holdTimer.stop();
        if (held)
            app.board.comparing = before;
        held = false;
    }

    text: qsTr("A / B")
    prominent: app.board.comparing
    hint: qsTr("Hold the version you started with up against your changes")
    Accessible.role: Accessible.CheckBox
    Accessible.checkable: true
    Accessible.checked: app.board.comparing
    Accessible.description: hint
    Accessible.onPressAction: button.app.board.comparing = !button.app.board.comparing
    Accessible.onToggleAction: button.app.board.comparing = !button.app.board.comparing
    onPressed: begin()
    onReleased: end()
    onCanceled: end()

    Timer {
        id: holdTimer
        interval: Theme.hold
        onTriggered: button.held = true
    }
}
