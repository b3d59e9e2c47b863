// A board file or sound pack is being read, written or taken in.
import QtQuick
import QtQuick.Layouts
import Vornic

Rectangle {
    id: line

    required property Adapters app

    visible: app.files.busy
    implicitHeight: row.implicitHeight + 16
    radius: Theme.radius
    color: Theme.surface
    border.color: Theme.line

    RowLayout {
        id: row
        anchors.fill: parent
        anchors.margins: 8
        spacing: Theme.gap
        ColumnLayout {
            Layout.fillWidth: true
            spacing: 6
            Label {
                Layout.fillWidth: true
                text: line.app.files.work
                elide: Text.ElideMiddle
                wrapMode: Text.NoWrap
            }
            ProgressLine {
                Layout.fillWidth: true
                visible: share >= 0
                share: line.app.files.share
            }
        }
        PushButton {
            text: qsTr("Cancel")
            onClicked: line.app.files.cancel()
        }
    }
}
