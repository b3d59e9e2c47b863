// A lamp that lights with the first key, and how fast that key sounded.
import QtQuick
import QtQuick.Layouts
import Vornic

Card {
    id: card

    required property Adapters app
    readonly property bool heard: app.status.keyHeard

    padding: 12
    RowLayout {
        spacing: Theme.margin
        Rectangle {
            Layout.preferredWidth: 36
            Layout.preferredHeight: 36
            radius: 18
            color: card.heard ? Theme.accent : "transparent"
            border.color: card.heard ? Theme.text : Theme.secondary
            border.width: card.app.status.typing ? 3 : 1
            Accessible.role: Accessible.Indicator
            Accessible.name: card.heard ? qsTr("A key was heard") : qsTr("No key was heard yet")
            Symbol {
                anchors.centerIn: parent
                symbol: card.heard ? "check" : "keyboard"
                color: card.heard ? Theme.accentInk : Theme.secondary
            }
        }
        ColumnLayout {
            Layout.fillWidth: true
            spacing: 2
            Label {
                Layout.fillWidth: true
                text: card.heard ? qsTr("Vornic hears your keys.") : qsTr("Press any key.")
                font.weight: Font.DemiBold
            }
            Label {
                Layout.fillWidth: true
                text: !card.heard ? qsTr("It should sound at once.")
                    : card.app.diagnostics.keyToSound !== "" ? card.app.diagnostics.keyToSound : card.app.status.subtitle
                secondary: true
            }
        }
        PushButton {
            symbol: "play"
            text: qsTr("Play")
            enabled: card.app.board.boards.count > 0
            onClicked: card.app.board.playPhrase()
        }
    }
}
