// Asks for a board file or a sound pack, or for a folder of packs.
import QtQuick
import QtQuick.Controls.Basic
import Vornic

PushButton {
    id: button

    required property Adapters app

    text: qsTr("Import…")
    hint: qsTr("Add a board or a sound pack that somebody made")
    Accessible.description: hint
    onClicked: menu.open()

    Menu {
        id: menu

        y: button.height + 2
        width: 240
        padding: 4
        background: Rectangle {
            radius: Theme.radius
            color: Theme.surface
            border.color: Theme.line
        }
        delegate: MenuItem {
            id: entry
            height: Theme.control
            contentItem: Label {
                text: entry.text
                verticalAlignment: Text.AlignVCenter
                Accessible.ignored: true
            }
            background: Rectangle {
                radius: Theme.radius - 2
                color: entry.highlighted ? Theme.hover : "transparent"
            }
        }
        Action {
            text: qsTr("Board or sound pack…")
            onTriggered: dialogs.ask(false)
        }
        Action {
            text: qsTr("Folder of sound packs…")
            onTriggered: dialogs.ask(true)
        }
        Action {
            text: qsTr("How to bring in a sound pack")
            onTriggered: help.open()
        }
    }
    PackHelp {
        id: help
        objectName: "packHelp"
    }
    Loader {
        id: dialogs
        objectName: "importDialogs"

        function ask(folder) {
            active = true;
            item.ask(folder);
        }

        active: false
        source: "ImportDialogs.qml"
        Connections {
            target: dialogs.item
            function onPicked(file) {
                button.app.windows.openFile(file);
            }
        }
    }
}
