// Offers a sound that was just made for the whole keyboard.
import QtQuick
import QtQuick.Layouts
import Vornic

Card {
    id: card

    required property RecordingAdapter recorder

    visible: recorder.justMade !== ""
    RowLayout {
        spacing: Theme.gap
        Symbol { symbol: "check-circle" }
        Label {
            Layout.fillWidth: true
            Layout.maximumWidth: 320
            text: qsTr("\"%1\" is on this keyboard now.").arg(card.recorder.justMade)
        }
        PushButton {
            text: qsTr("Not now")
            onClicked: card.recorder.dismissOffer()
        }
        PushButton {
            text: qsTr("Use for all keys")
            prominent: true
            onClicked: card.recorder.useForAllKeys()
        }
    }
}
