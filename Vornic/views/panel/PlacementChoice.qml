// Where the keyboard is to be heard.
import QtQuick
import Vornic

Choice {
    required property Adapters app

    name: qsTr("Where it sits")
    options: [{ value: false, text: qsTr("On the desk") }, { value: true, text: qsTr("Close") }]
    value: app.settings.close
    onPicked: v => app.settings.close = v
}
