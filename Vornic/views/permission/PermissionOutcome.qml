// What came of the answer so far; nothing before there is one.
import QtQuick
import QtQuick.Layouts
import Vornic

Card {
    id: card

    required property Adapters app
    readonly property PermissionAdapter permission: app.permission

    readonly property int outcome: permission.state
    readonly property bool listening: app.status.listening
    readonly property string title: ({
        [PermissionAdapter.Waiting]: qsTr("Waiting for your answer to the system's question…"),
        [PermissionAdapter.Declined]: qsTr("Declined."),
        [PermissionAdapter.Failed]: qsTr("That did not work."),
        [PermissionAdapter.Granted]: qsTr("Permission granted."),
        [PermissionAdapter.TakenBack]: qsTr("Input Monitoring is off.")
    })[outcome] ?? ""
    readonly property string more: outcome === PermissionAdapter.Granted
        ? (listening ? qsTr("Vornic hears your keys. Press one: the lamp lights.")
                     : qsTr("Start Vornic again to let it hear your keys."))
        : permission.message

    visible: title !== "" || more !== ""
    Accessible.role: Accessible.AlertMessage
    Accessible.name: title + " " + more
    RowLayout {
        Layout.fillWidth: true
        visible: card.title !== ""
        spacing: Theme.gap
        Symbol {
            symbol: ({ [PermissionAdapter.Failed]: "warning", [PermissionAdapter.Granted]: "check-circle" })[card.outcome] ?? "keyboard"
            color: card.outcome === PermissionAdapter.Failed ? Theme.warning : Theme.text
        }
        Label {
            Layout.fillWidth: true
            text: card.title
            font.weight: Font.DemiBold
        }
        Lamp {
            visible: card.outcome === PermissionAdapter.Granted && card.listening
            lit: card.app.status.typing
        }
    }
    Label {
        Layout.fillWidth: true
        visible: text !== ""
        text: card.more
        secondary: true
    }
}
