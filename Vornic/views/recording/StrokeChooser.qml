// The strokes of a recording, the best first, to be made into a sound.
import QtQuick
import QtQuick.Layouts
import Vornic

Sheet {
    id: sheet

    required property RecordingAdapter recorder

    width: Math.min(760, parent ? parent.width - 24 : 760)
    height: Math.min(implicitHeight, parent ? parent.height - 24 : implicitHeight)

    contentItem: ColumnLayout {
        spacing: 12
        Keys.onEscapePressed: sheet.recorder.cancel()
        RowLayout {
            spacing: Theme.gap
            Label {
                    Layout.fillWidth: true
                text: qsTr("Make a sound from a recording")
                font.pixelSize: Theme.heading
                font.weight: Font.DemiBold
                Accessible.role: Accessible.Heading
            }
            EditableText {
                Layout.preferredWidth: 240
                text: sheet.recorder.name
                name: qsTr("Name of the sound")
                framed: true
                onCommitted: value => sheet.recorder.name = value
            }
        }
        Label {
            Layout.fillWidth: true
            text: qsTr("Found %1 keystrokes. These are the %2 cleanest; untick any you don't like.").arg(sheet.recorder.found).arg(sheet.recorder.offered)
        }
        Label {
            Layout.fillWidth: true
            visible: text !== ""
            text: sheet.recorder.notice
            color: Theme.warning
            Accessible.role: Accessible.AlertMessage
        }
        StrokeList {
            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.minimumHeight: 120
            recorder: sheet.recorder
        }
        Label {
            Layout.fillWidth: true
            text: qsTr("Decibels: how far a keystroke rises above the noise of the room. A click on its picture plays it; its two ends can be moved.")
            secondary: true
            font.pixelSize: Theme.small
        }
        RowLayout {
            spacing: Theme.gap
            Toggle {
                visible: sheet.recorder.releases > 0
                checked: sheet.recorder.keepsReleases
                Accessible.name: releaseLabel.text
                onToggled: sheet.recorder.keepsReleases = checked
            }
            Label {
                id: releaseLabel
                Layout.fillWidth: true
                visible: sheet.recorder.releases > 0
                text: qsTr("Keep key releases too (%1 found)").arg(sheet.recorder.releases)
            }
            Item { Layout.fillWidth: true }
            PushButton {
                text: qsTr("Cancel")
                onClicked: sheet.recorder.cancel()
            }
            PushButton {
                text: sheet.recorder.ticked === 1 ? qsTr("Keep 1 keystroke") : qsTr("Keep %1 keystrokes").arg(sheet.recorder.ticked)
                prominent: true
                enabled: sheet.recorder.ticked > 0
                onClicked: sheet.recorder.keep()
            }
        }
    }
}
