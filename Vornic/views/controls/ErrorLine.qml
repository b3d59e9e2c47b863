// What went wrong last, or, where that is no error, what is worth knowing; until it is read.
import QtQuick
import QtQuick.Layouts
import Vornic

Rectangle {
    id: line

    property string text: ""
    property bool isError: true
    signal dismissed()

    visible: text !== ""
    implicitHeight: row.implicitHeight + 16
    radius: Theme.radius
    color: Theme.surface
    border.color: isError ? Theme.warning : Theme.line
    Accessible.role: Accessible.AlertMessage
    Accessible.name: text

    RowLayout {
        id: row
        anchors.fill: parent
        anchors.margins: 8
        spacing: Theme.gap
        Symbol {
            visible: line.isError
            symbol: "warning"
            color: Theme.warning
        }
        Label {
            Layout.fillWidth: true
            text: line.text
        }
        PushButton {
            symbol: "close"
            implicitHeight: 24
            Accessible.name: qsTr("Dismiss")
            onClicked: line.dismissed()
        }
    }
}
