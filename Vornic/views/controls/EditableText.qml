// A name that can be typed over. While it is typed it does not follow `text`: every key is heard by
// the model too, which says then that all it has may have changed.
import QtQuick
import QtQuick.Controls.Basic
import Vornic

FocusScope {
    id: scope

    property string text: ""
    property string name: ""
    // Whether its frame shows although nobody points at it.
    property bool framed: false
    property string before: ""
    signal committed(string value)

    implicitWidth: field.implicitWidth
    implicitHeight: Theme.control

    Binding {
        target: field
        property: "text"
        value: scope.text
        when: !field.activeFocus
        restoreMode: Binding.RestoreNone
    }
    TextField {
        id: field
        anchors.fill: parent
        focus: true
        leftPadding: 6
        rightPadding: 6
        color: Theme.text
        selectionColor: Theme.accent
        selectedTextColor: Theme.accentInk
        font.pixelSize: Theme.title
        font.weight: Font.DemiBold
        hoverEnabled: true
        maximumLength: 120
        Accessible.name: scope.name
        // A name that is too long is read from its beginning.
        onTextChanged: if (!activeFocus) cursorPosition = 0
        onActiveFocusChanged: {
            if (activeFocus)
                scope.before = text;
            else
                cursorPosition = 0;
        }
        clip: true
        // Also called when the field is left as it was; meanwhile another board may be current.
        onEditingFinished: {
            const typed = text.trim();
            if (typed !== "" && typed !== scope.before) {
                scope.before = typed;
                scope.committed(typed);
            }
        }

        background: Rectangle {
            radius: Theme.radius - 2
            color: field.activeFocus ? Theme.surface : "transparent"
            border.color: field.activeFocus ? Theme.focus : field.hovered || scope.framed ? Theme.line : "transparent"
        }
    }
}
