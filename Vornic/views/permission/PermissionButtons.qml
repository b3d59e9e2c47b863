// The answers that can be given now.
import QtQuick
import QtQuick.Layouts
import Vornic

RowLayout {
    id: buttons

    required property ModelAdapter app
    required property PermissionAdapter permission

    readonly property string outcome: permission.state
    readonly property bool asks: outcome !== "granted" && outcome !== "waiting"

    spacing: Theme.gap
    PushButton {
        visible: buttons.permission.granted && buttons.outcome !== "waiting"
        text: qsTr("Turn it off again")
        onClicked: buttons.permission.takeBack()
    }
    Item { Layout.fillWidth: true }
    PushButton {
        // The answer that changes nothing has the keyboard first.
        focus: true
        text: buttons.outcome === "asking" || buttons.outcome === "declined" ? qsTr("Not now") : qsTr("Close")
        onClicked: buttons.Window.window.close()
    }
    PushButton {
        visible: buttons.asks && !buttons.permission.granted
        enabled: buttons.permission.possible
        text: buttons.outcome === "asking" || buttons.outcome === "takenBack" ? qsTr("Agree") : qsTr("Try again")
        prominent: true
        onClicked: buttons.permission.agree()
    }
    PushButton {
        visible: buttons.outcome === "granted" && buttons.app.tapState !== "listening"
        text: qsTr("Relaunch")
        prominent: true
        onClicked: buttons.app.relaunch()
    }
}
