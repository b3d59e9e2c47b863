// Marks a board that the user made.
import QtQuick
import Vornic

Rectangle {
    implicitWidth: tag.implicitWidth + 12
    implicitHeight: tag.implicitHeight + 4
    radius: 4
    color: "transparent"
    border.color: Theme.secondary

    Label {
        id: tag
        anchors.centerIn: parent
        text: qsTr("Yours")
        secondary: true
        font.pixelSize: Theme.small
        wrapMode: Text.NoWrap
    }
}
