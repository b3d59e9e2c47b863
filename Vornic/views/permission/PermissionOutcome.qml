// What came of the answer so far; nothing before there is one.
import QtQuick
import QtQuick.Layouts
import Vornic

Card {
    id: card

    required property ModelAdapter app
    required property PermissionAdapter permission

    readonly property string outcome: permission.state
    readonly property bool listening: app.tapState === "listening"
    readonly property string title: ({
        "waiting": qsTr("Waiting for your answer to the system's question…"),
        "declined": qsTr("Declined."),
        "failed": qsTr("That did not work."),
        "granted": qsTr("Permission granted."),
        "takenBack": qsTr("Input Monitoring is off.")
    })[outcome] ?? ""
    readonly property string more: outcome === "granted"
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
            symbol: ({ "failed": "warning", "granted": "check-circle" })[card.outcome] ?? "keyboard"
            color: card.outcome === "failed" ? Theme.warning : Theme.text
        }
        Label {
            Layout.fillWidth: true
            text: card.title
            font.weight: Font.DemiBold
        }
        Lamp {
            visible: card.outcome === "granted" && card.listening
            lit: card.app.typing
        }
    }
    Label {
        Layout.fillWidth: true
        visible: text !== ""
        text: card.more
        secondary: true
    }
}
