// Text in the program's type and colour.
import QtQuick
import Vornic

Text {
    property bool secondary: false

    color: secondary ? Theme.secondary : Theme.text
    font.pixelSize: Theme.body
    textFormat: Text.PlainText
    wrapMode: Text.Wrap
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
