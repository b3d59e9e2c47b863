// What stands in for the status while no keys can be heard.
import QtQuick
import QtQuick.Layouts
import Vornic

Card {
    id: block

    required property ModelAdapter app

    visible: app.tapState !== "listening"
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
        visible: block.app.tapState === "needsRelaunch"
        text: qsTr("Permission granted.")
    }
    Label {
        Layout.fillWidth: true
        visible: text !== "" && block.app.tapState === "needsPermission"
        text: block.app.permissionHint
        secondary: true
    }
    PushButton {
        visible: block.app.tapState === "needsRelaunch"
        text: qsTr("Relaunch")
        prominent: true
        onClicked: block.app.relaunch()
    }
    PushButton {
        visible: block.app.tapState === "needsPermission" && block.app.canAskForPermission
        text: qsTr("Turn on Input Monitoring…")
        prominent: true
        onClicked: block.app.askForPermission()
    }
}
