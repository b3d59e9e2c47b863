// A name that can be typed over.
import QtQuick
import QtQuick.Controls.Basic
import Vornic

TextField {
    id: field

    property string name: ""
    // Whether its frame shows although nobody points at it.
    property bool framed: false
    signal committed(string value)

    implicitHeight: Theme.control
    leftPadding: 6
    rightPadding: 6
    color: Theme.text
    selectionColor: Theme.accent
    selectedTextColor: Theme.accentInk
    font.pixelSize: Theme.title
    font.weight: Font.DemiBold
    hoverEnabled: true
    maximumLength: 120
    Accessible.name: name
    // Typed over, it no longer follows the model: committed or given up, it does again.
    // A name that is too long is read from its beginning.
    onTextChanged: if (!activeFocus) cursorPosition = 0
    onActiveFocusChanged: if (!activeFocus) cursorPosition = 0
    clip: true
    onEditingFinished: if (text.trim() !== "") committed(text.trim())

    background: Rectangle {
        radius: Theme.radius - 2
        color: field.activeFocus ? Theme.surface : "transparent"
        border.color: field.activeFocus ? Theme.focus : field.hovered || field.framed ? Theme.line : "transparent"
    }
}
