// Plays the version that the user started with instead of the changed one: while it is held, or,
// after a short click, until the next one.
import QtQuick
import QtQuick.Controls.Basic
import Vornic

PushButton {
    id: button

    required property ModelAdapter app
    // Whether it was down for so long that letting go ends it.
    property bool held: false
    property bool before: false

    // For its button and for the key that stands for it.
    function begin() {
        held = false;
        before = app.comparing;
        app.comparing = !before;
        holdTimer.restart();
    }
    function end() {
        holdTimer.stop();
        if (held)
            app.comparing = before;
        held = false;
    }

    objectName: "compare"
    text: qsTr("A / B")
    prominent: app.comparing
    ToolTip.text: qsTr("Hold the version you started with up against your changes")
    Accessible.role: Accessible.CheckBox
    Accessible.checkable: true
    Accessible.checked: app.comparing
    Accessible.description: ToolTip.text
    Accessible.onPressAction: button.app.comparing = !button.app.comparing
    Accessible.onToggleAction: button.app.comparing = !button.app.comparing
    onPressed: begin()
    onReleased: end()
    onCanceled: end()

    Timer {
        id: holdTimer
        interval: Theme.hold
        onTriggered: button.held = true
    }
}
