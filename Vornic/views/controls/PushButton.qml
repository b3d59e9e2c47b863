// A button with a text, a symbol, or both.
import QtQuick
import QtQuick.Controls.Basic
import Vornic

Button {
    id: button

    property string symbol: ""
    property string hint: ""
    property bool prominent: false
    readonly property color ink: prominent ? Theme.accentInk : Theme.text

    implicitHeight: Theme.control
    leftPadding: text === "" ? 6 : 12
    rightPadding: leftPadding
    spacing: 6
    font.pixelSize: Theme.body
    // A click leaves no focus: a key that is typed to be heard must press nothing.
    focusPolicy: Qt.TabFocus
    hoverEnabled: true
    opacity: enabled ? 1 : 0.45
    Accessible.name: text
    Hint { text: button.hint }

    contentItem: Item {
        id: content

        // By what the button has, not by what is visible: in a hidden view nothing is.
        readonly property real before: button.symbol === "" ? 0 : picture.width + (button.text === "" ? 0 : row.spacing)

        implicitWidth: before + (button.text === "" ? 0 : label.implicitWidth)
        implicitHeight: Math.max(picture.height, label.implicitHeight)
        Row {
            id: row
            anchors.centerIn: parent
            spacing: button.spacing
            Symbol {
                id: picture
                anchors.verticalCenter: parent.verticalCenter
                visible: button.symbol !== ""
                symbol: button.symbol === "" ? "check" : button.symbol
                color: button.ink
            }
            Text {
                id: label
                anchors.verticalCenter: parent.verticalCenter
                // Elides in a button that is narrower than its text.
                width: Math.max(0, Math.min(implicitWidth, content.width - content.before))
                visible: button.text !== ""
                text: button.text
                textFormat: Text.PlainText
                elide: Text.ElideRight
                font: button.font
                color: button.ink
            }
        }
    }
    background: Rectangle {
        radius: Theme.radius
        color: button.prominent ? (button.down ? Qt.darker(Theme.accent, 1.15) : Theme.accent)
             : button.down ? Theme.track : button.hovered ? Theme.hover : Theme.surface
        border.color: button.prominent ? "transparent" : Theme.edge
        FocusRing { control: button }
    }
}
