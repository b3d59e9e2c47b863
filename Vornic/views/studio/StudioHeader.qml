// The board's name and whose it is, and what applies to the whole board.
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Vornic

RowLayout {
    id: header

    required property Adapters app
    signal exportBoard()

    spacing: Theme.gap
    ColumnLayout {
        Layout.fillWidth: true
        Layout.minimumWidth: 120
        spacing: 2
        RowLayout {
            spacing: Theme.gap
            EditableText {
                Layout.fillWidth: true
                Layout.minimumWidth: 60
                Layout.preferredWidth: implicitWidth
                Layout.maximumWidth: implicitWidth
                text: header.app.board.name
                name: qsTr("Name of the board")
                onCommitted: value => header.app.board.rename(value)
            }
            YoursTag { visible: header.app.board.mine }
            Item { Layout.fillWidth: true }
        }
        Label {
            visible: !header.app.board.mine && header.app.board.name !== ""
            text: qsTr("Built in · editing makes your own copy")
            secondary: true
            font.pixelSize: Theme.small
        }
    }
    PushButton {
        symbol: "undo"
        enabled: header.app.board.canUndo
        Accessible.name: qsTr("Undo")
        hint: qsTr("Undo")
        onClicked: header.app.board.undo()
    }
    PushButton {
        symbol: "redo"
        enabled: header.app.board.canRedo
        Accessible.name: qsTr("Redo")
        hint: qsTr("Redo")
        onClicked: header.app.board.redo()
    }
    CompareButton {
        app: header.app
    }
    PushButton {
        symbol: "plus"
        Accessible.name: qsTr("New board")
        hint: qsTr("New board")
        onClicked: header.app.board.create()
    }
    PushButton {
        symbol: "trash"
        enabled: header.app.board.mine
        Accessible.name: qsTr("Delete board")
        hint: qsTr("Delete board")
        onClicked: sure.open()
        DeleteBoardSheet {
            id: sure
            app: header.app
        }
    }
    ImportButton { app: header.app }
    PushButton {
        symbol: "export"
        text: qsTr("Export…")
        hint: qsTr("Save this board as a .vornic file you can send to someone")
        Accessible.description: hint
        onClicked: header.exportBoard()
    }
}
