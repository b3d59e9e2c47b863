// What stands in for the status while no keys can be heard.
import QtQuick
import QtQuick.Layouts
import Vornic

Card {
    id: block

    required property Adapters app

    visible: !app.status.listening
    RowLayout {
        spacing: Theme.gap
        Symbol {
            symbol: "warning"
            color: Theme.warning
        }
        Label {
            Layout.fillWidth: true
            text: qsTr("Can't hear your keys")
            font.weight: Font.DemiBold
        }
    }
    Label {
        Layout.fillWidth: true
        visible: block.app.status.needsRelaunch
        text: qsTr("Permission granted.")
    }
    Label {
        Layout.fillWidth: true
        visible: text !== "" && block.app.status.needsPermission
        text: block.app.permission.hint
        secondary: true
    }
    PushButton {
        visible: block.app.status.needsRelaunch
        text: qsTr("Relaunch")
        prominent: true
        onClicked: block.app.permission.relaunch()
    }
    PushButton {
        visible: block.app.status.needsPermission && block.app.permission.canAsk
        text: qsTr("Turn on Input Monitoring…")
        prominent: true
        onClicked: block.app.windows.openPermission()
    }
}
