// The answers that can be given now.
import QtQuick
import QtQuick.Layouts
import Vornic

RowLayout {
    id: buttons

    required property Adapters app
    readonly property PermissionAdapter permission: app.permission

    readonly property int outcome: permission.state
    readonly property bool asks: outcome !== PermissionAdapter.Granted && outcome !== PermissionAdapter.Waiting

    spacing: Theme.gap
    PushButton {
        visible: buttons.permission.granted && buttons.outcome !== PermissionAdapter.Waiting
        text: qsTr("Turn it off again")
        onClicked: buttons.permission.takeBack()
    }
    Item { Layout.fillWidth: true }
    PushButton {
        // The answer that changes nothing has the keyboard first.
        focus: true
        text: buttons.outcome === PermissionAdapter.Asking || buttons.outcome === PermissionAdapter.Declined ? qsTr("Not now") : qsTr("Close")
        onClicked: buttons.Window.window.close()
    }
    PushButton {
        visible: buttons.asks && !buttons.permission.granted
        enabled: buttons.permission.possible
        text: buttons.outcome === PermissionAdapter.Asking || buttons.outcome === PermissionAdapter.TakenBack ? qsTr("Agree") : qsTr("Try again")
        prominent: true
        onClicked: buttons.permission.agree()
    }
    PushButton {
        visible: buttons.outcome === PermissionAdapter.Granted && !buttons.app.status.listening
        text: qsTr("Relaunch")
        prominent: true
        onClicked: buttons.permission.relaunch()
    }
}
