// Asks before a board goes for good.
import QtQuick
import QtQuick.Layouts
import Vornic

Sheet {
    id: sheet

    required property Adapters app

    objectName: "deleteBoard"
    width: 420
    onAboutToShow: cancel.forceActiveFocus()

    contentItem: ColumnLayout {
        spacing: 14
        Keys.onEscapePressed: sheet.close()
        Label {
            Layout.fillWidth: true
            text: qsTr("Delete \"%1\"?").arg(sheet.app.board.name)
            font.weight: Font.DemiBold
        }
        Label {
            Layout.fillWidth: true
            text: qsTr("It cannot be brought back. Export it first to keep it as a file.")
            secondary: true
        }
        RowLayout {
            spacing: Theme.gap
            Item { Layout.fillWidth: true }
            PushButton {
                id: cancel
                text: qsTr("Cancel")
                onClicked: sheet.close()
            }
            PushButton {
                text: qsTr("Delete")
                prominent: true
                onClicked: {
                    sheet.close();
                    sheet.app.board.remove();
                }
            }
        }
    }
}
