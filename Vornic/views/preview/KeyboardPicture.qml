// A keyboard to look at: its keys to scale, in the colours of the sounds that they play.
import QtQuick
import Vornic

Item {
    id: picture

    property var keys: []
    property real layoutWidth: 1
    property real layoutHeight: 1
    readonly property real unit: width / Math.max(1, layoutWidth)

    implicitHeight: layoutHeight * unit
    Accessible.role: Accessible.Graphic
    Accessible.name: qsTr("Keyboard")

    Repeater {
        model: picture.keys
        delegate: KeyCap {
            required property var modelData

            row: modelData
            Accessible.ignored: true
            x: modelData.x * picture.unit
            y: modelData.y * picture.unit
            width: modelData.w * picture.unit
            height: modelData.h * picture.unit
        }
    }
}
