// Which colour stands for which sound.
import QtQuick
import Vornic

Flow {
    id: legend

    required property var sounds

    spacing: 14
    Repeater {
        model: legend.sounds
        delegate: Row {
            required property var modelData
            required property int index

            spacing: 6
            Rectangle {
                anchors.verticalCenter: parent.verticalCenter
                width: 12
                height: 6
                radius: 3
                color: Theme.soundColour(parent.index)
            }
            Label {
                text: parent.modelData.text
                secondary: true
                font.pixelSize: Theme.small
                wrapMode: Text.NoWrap
            }
        }
    }
}
