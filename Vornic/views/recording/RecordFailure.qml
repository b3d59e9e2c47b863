// Why the last recording came to nothing, and what to do.
import QtQuick
import QtQuick.Layouts
import Vornic

RowLayout {
    id: view

    property string failure: ""
    property string advice: ""

    spacing: Theme.gap
    Symbol {
        Layout.alignment: Qt.AlignTop
        visible: view.failure !== ""
        symbol: "warning"
        color: Theme.warning
    }
    ColumnLayout {
        Layout.alignment: Qt.AlignTop
        spacing: 4
        Label {
            Layout.fillWidth: true
            text: view.failure
            Accessible.role: Accessible.AlertMessage
        }
        Label {
            Layout.fillWidth: true
            visible: text !== ""
            text: view.advice
            secondary: true
        }
    }
}
