// Several sound packs: which of them to take in. A click on one lets it be heard.
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Vornic

ColumnLayout {
    id: column

    required property Adapters app

    spacing: Theme.gap
    Label {
        text: qsTr("%1 sound packs").arg(column.app.files.packs.count)
        font.pixelSize: Theme.title
        font.weight: Font.Bold
        Accessible.role: Accessible.Heading
    }
    Label {
        Layout.fillWidth: true
        text: qsTr("Choose one to hear it; tick those that you want.")
        secondary: true
    }
    ListView {
        id: list
        Layout.fillWidth: true
        Layout.fillHeight: true
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        model: column.app.files.packs
        Accessible.role: Accessible.List
        Accessible.name: qsTr("Sound packs")
        ScrollBar.vertical: ScrollBar { Accessible.ignored: true; policy: list.contentHeight > list.height ? ScrollBar.AlwaysOn : ScrollBar.AlwaysOff }
        delegate: PackRow {
            width: list.width - (list.contentHeight > list.height ? 12 : 0)
            app: column.app
        }
    }
    PushButton {
        Layout.fillWidth: true
        text: column.app.files.ticked === 1 ? qsTr("Add 1 keyboard") : qsTr("Add %1 keyboards").arg(column.app.files.ticked)
        enabled: column.app.files.ticked > 0 && !column.app.files.busy
        prominent: true
        onClicked: column.app.files.addTicked()
    }
}
