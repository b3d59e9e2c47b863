// What a control is for, shown while the mouse rests on it. Made when it is first needed, and plain
// text whatever it names: boards come from strangers.
import QtQuick
import QtQuick.Controls.Basic
import Vornic

Loader {
    id: hint

    property string text: ""
    property bool wanted: parent.hovered

    anchors.fill: parent
    active: wanted && text !== ""
    sourceComponent: ToolTip {
        id: tip

        delay: 600
        text: hint.text
        Component.onCompleted: visible = true

        contentItem: Text {
            text: tip.text
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            font.pixelSize: Theme.small
            color: Theme.text
        }
        background: Rectangle {
            radius: Theme.radius - 2
            color: Theme.surface
            border.color: Theme.line
        }
    }
}
