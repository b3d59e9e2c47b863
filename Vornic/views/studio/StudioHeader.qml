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
    KeycapPicture {
        Layout.preferredWidth: 40
        Layout.preferredHeight: 40
        colour: header.app.board.accent
    }
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
            PopupButton {
                id: boards
                symbol: "caret-down"
                implicitHeight: 26
                wanted: 280
                visible: header.app.board.boards.count > 0
                Accessible.name: qsTr("Choose a keyboard")
                hint: qsTr("Choose a keyboard")
                BoardList {
                    boards: header.app.board.boards
                    most: 9
                    onPicked: id => {
                        boards.close();
                        header.app.board.select(id);
                    }
                }
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
        symbol: "play"
        enabled: header.app.board.boards.count > 0
        Accessible.name: qsTr("Play")
        hint: qsTr("Play")
        onClicked: header.app.board.playPhrase()
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
    ImportButton { app: header.app }
    PushButton {
        symbol: "export"
        text: qsTr("Export…")
        hint: qsTr("Save this board as a .vornic file you can send to someone")
        Accessible.description: hint
        onClicked: header.exportBoard()
    }
    PopupButton {
        id: more
        symbol: "more"
        Accessible.name: qsTr("More")
        hint: qsTr("More")
        Column {
            Repeater {
                model: [
                    { symbol: "plus", text: qsTr("New board"), act: () => header.app.board.create() },
                    { symbol: "trash", text: qsTr("Delete board"), act: () => sure.open(), own: true }
                ]
                delegate: MenuEntry {
                    required property var modelData

                    width: parent ? parent.width : implicitWidth
                    symbol: modelData.symbol
                    text: modelData.text
                    enabled: !modelData.own || header.app.board.mine
                    onClicked: {
                        more.close();
                        modelData.act();
                    }
                }
            }
        }
    }
    DeleteBoardSheet {
        id: sure
        app: header.app
    }
}
