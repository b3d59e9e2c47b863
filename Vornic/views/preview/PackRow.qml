// One of several sound packs: ticked to be taken in, clicked to be heard.
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Vornic

Rectangle {
    id: item

    required property var row
    required property int index
    required property Adapters app
    readonly property bool readable: row.error === ""

    implicitHeight: content.implicitHeight + 12
    radius: Theme.radius
    color: row.shown ? Theme.hover : "transparent"

    RowLayout {
        id: content
        anchors.fill: parent
        anchors.leftMargin: 6
        anchors.rightMargin: 6
        spacing: Theme.gap
        Tick {
            visible: item.readable && !item.row.added
            checked: item.row.ticked
            Accessible.name: qsTr("Add %1").arg(item.row.name)
            onToggled: item.app.files.tick(item.index, checked)
        }
        Symbol {
            Layout.preferredWidth: 20
            visible: !item.readable || item.row.added
            symbol: item.readable ? "check-circle" : "warning"
            color: item.readable ? Theme.secondary : Theme.warning
        }
        AbstractButton {
            id: button
            Layout.fillWidth: true
            enabled: item.readable
            focusPolicy: Qt.TabFocus
            Accessible.name: qsTr("Hear %1").arg(item.row.name)
            onClicked: item.app.files.hear(item.index)
            contentItem: ColumnLayout {
                spacing: 1
                Label {
                    Layout.fillWidth: true
                    text: item.row.name
                    elide: Text.ElideRight
                    wrapMode: Text.NoWrap
                    Accessible.ignored: true
                }
                Label {
                    Layout.fillWidth: true
                    text: !item.readable ? item.row.error : item.row.added ? qsTr("Added") : item.row.detail
                    secondary: true
                    font.pixelSize: Theme.small
                    elide: Text.ElideRight
                    maximumLineCount: 3
                    Accessible.ignored: item.readable
                }
            }
            background: Rectangle {
                radius: Theme.radius
                color: "transparent"
                FocusRing { control: button }
            }
        }
    }
}
