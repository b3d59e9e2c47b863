// The edited stroke as it sounds.
import QtQuick
import QtQuick.Layouts
import Vornic

Card {
    id: view

    required property var wave
    property real millis: 0

    padding: 8
    Item {
        Layout.fillWidth: true
        implicitHeight: 72
        Accessible.role: Accessible.Graphic
        Accessible.name: qsTr("The stroke, %1 ms long").arg(Math.round(view.millis))

        Row {
            id: bars
            anchors.fill: parent
            Repeater {
                model: view.wave
                delegate: Item {
                    required property real modelData

                    width: bars.width / Math.max(1, view.wave.length)
                    height: bars.height
                    Rectangle {
                        anchors.centerIn: parent
                        width: Math.max(1, parent.width - 1)
                        height: Math.max(1, parent.modelData * bars.height)
                        radius: width / 2
                        color: Theme.accent
                        border.color: Theme.line
                        border.width: width > 3 ? 1 : 0
                    }
                }
            }
        }
        Label {
            anchors.right: parent.right
            anchors.bottom: parent.bottom
            text: qsTr("%1 ms").arg(Math.round(view.millis))
            secondary: true
            font.pixelSize: Theme.small
        }
        Label {
            anchors.centerIn: parent
            visible: view.wave.length === 0
            text: qsTr("Nothing to hear: this sound has no recordings.")
            secondary: true
        }
    }
}
