// The board's name and whose it is, and what applies to the whole board.
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Vornic

RowLayout {
    id: header

    required property ModelAdapter app
    readonly property alias compareButton: compare
    signal exportBoard()
    signal importBoard()

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
                text: header.app.boardName
                name: qsTr("Name of the board")
                onCommitted: value => header.app.renameBoard(value)
            }
            YoursTag { visible: header.app.mine }
            Item { Layout.fillWidth: true }
        }
        Label {
            visible: !header.app.mine && header.app.boardName !== ""
            text: qsTr("Built in · editing makes your own copy")
            secondary: true
            font.pixelSize: Theme.small
        }
    }
    PushButton {
        symbol: "undo"
        enabled: header.app.canUndo
        Accessible.name: qsTr("Undo")
        ToolTip.text: qsTr("Undo")
        onClicked: header.app.undo()
    }
    PushButton {
        symbol: "redo"
        enabled: header.app.canRedo
        Accessible.name: qsTr("Redo")
        ToolTip.text: qsTr("Redo")
        onClicked: header.app.redo()
    }
    CompareButton {
        id: compare
        app: header.app
    }
    PushButton {
        symbol: "plus"
        Accessible.name: qsTr("New board")
        ToolTip.text: qsTr("New board")
        onClicked: header.app.newBoard()
    }
    PushButton {
        symbol: "trash"
        enabled: header.app.mine
        Accessible.name: qsTr("Delete board")
        ToolTip.text: qsTr("Delete board")
        onClicked: sure.open()
        DeleteBoardSheet {
            id: sure
            app: header.app
        }
    }
    PushButton {
        text: qsTr("Import…")
        onClicked: header.importBoard()
    }
    PushButton {
        symbol: "export"
        text: qsTr("Export…")
        ToolTip.text: qsTr("Save this board as a .vornic file you can send to someone")
        Accessible.description: ToolTip.text
        onClicked: header.exportBoard()
    }
}
