// Where the keyboard is to be heard.
import QtQuick
import Vornic

Choice {
    required property ModelAdapter app

    name: qsTr("Where it sits")
    options: [{ value: false, text: qsTr("On the desk") }, { value: true, text: qsTr("Close") }]
    value: app.close
    onPicked: v => app.close = v
}
