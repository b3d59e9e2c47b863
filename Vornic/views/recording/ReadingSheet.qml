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
        ProgressLine {
            Layout.fillWidth: true
            share: sheet.recorder.progress
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
