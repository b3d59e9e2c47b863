// Whether keys sound: what is, why, and the one thing to do about it.
import QtQuick
import QtQuick.Layouts
import Vornic

Card {
    id: card

    required property Adapters app
    readonly property StatusAdapter status: app.status

    visible: status.listening
    padding: 10
    RowLayout {
        spacing: Theme.gap
        Symbol {
            Layout.alignment: Qt.AlignTop
            symbol: card.status.symbol
        }
        ColumnLayout {
            Layout.fillWidth: true
            spacing: 2
            Label {
                Layout.fillWidth: true
                text: card.status.line
                font.weight: Font.DemiBold
            }
            Label {
                Layout.fillWidth: true
                visible: text !== ""
                text: card.status.why
                secondary: true
                font.pixelSize: Theme.small
            }
        }
        PushButton {
            visible: card.status.remedy !== StatusAdapter.Nothing
            text: card.status.remedy === StatusAdapter.SwitchOn ? qsTr("Switch on") : qsTr("Settings…")
            onClicked: card.status.remedy === StatusAdapter.SwitchOn ? card.app.settings.soundsOn = true
                                                                     : card.app.windows.openSettings()
        }
    }
}
