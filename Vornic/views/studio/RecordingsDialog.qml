// Chooses the recordings of a layer from the library, set by set or one by one.
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Templates as Templates
import QtQuick.Layouts
import Vornic

Popup {
    id: dialog

    required property LayersAdapter layers
    property int place: -1
    readonly property var chosen: layers.list[place]?.samples ?? []
    property var sets: []

    parent: Templates.Overlay.overlay
    anchors.centerIn: parent
    width: Math.min(460, parent.width - 40)
    height: Math.min(560, parent.height - 40)
    modal: true
    focus: true
    padding: 16
    onAboutToShow: sets = layers.recordings()

    background: Rectangle {
        radius: Theme.radius + 4
        color: Theme.window
        border.color: Theme.line
    }
    contentItem: ColumnLayout {
        spacing: 12
        RowLayout {
            Layout.fillWidth: true
            Label {
                Layout.fillWidth: true
                text: qsTr("Recordings of layer %1").arg(dialog.place + 1)
                font.pixelSize: Theme.title
                font.weight: Font.DemiBold
            }
            PushButton {
                text: qsTr("Done")
                onClicked: dialog.close()
            }
        }
        Label {
            Layout.fillWidth: true
            text: qsTr("Each variation of the stroke plays the next of the chosen ones.")
            secondary: true
            font.pixelSize: Theme.small
        }
        ListView {
            id: list
            Layout.fillWidth: true
            Layout.fillHeight: true
            clip: true
            spacing: 4
            model: dialog.sets
            boundsBehavior: Flickable.StopAtBounds
            ScrollBar.vertical: ScrollBar {}
            delegate: RecordingSet {
                width: list.width - 12
                chosen: dialog.chosen
                onPicked: (ids, on) => dialog.layers.choose(dialog.place, ids, on)
                onPlayed: id => dialog.layers.play(id)
            }
        }
    }
}
