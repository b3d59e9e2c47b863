// A file is being read.
import QtQuick
import QtQuick.Layouts
import Vornic

Sheet {
    id: sheet

    required property RecordingAdapter recorder

    width: 420

    contentItem: ColumnLayout {
        spacing: 14
        Label {
            Layout.fillWidth: true
            text: qsTr("Reading %1").arg(sheet.recorder.fileName)
            elide: Text.ElideMiddle
            wrapMode: Text.NoWrap
        }
        Rectangle {
            Layout.fillWidth: true
            implicitHeight: 6
            radius: 3
            color: Theme.track
            Accessible.role: Accessible.ProgressBar
            Accessible.name: qsTr("%1 % read").arg(Math.round(sheet.recorder.progress * 100))
            Rectangle {
                width: parent.width * sheet.recorder.progress
                height: parent.height
                radius: 3
                color: Theme.focus
            }
        }
        PushButton {
            Layout.alignment: Qt.AlignRight
            focus: true
            text: qsTr("Cancel")
            onClicked: sheet.recorder.cancelReading()
            Keys.onEscapePressed: sheet.recorder.cancelReading()
        }
    }
}
