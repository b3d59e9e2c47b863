// The board's sounds: which one is edited, and what there is.
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Vornic

Card {
    id: card

    required property SoundListAdapter sounds

    padding: 8
    ListView {
        id: list
        objectName: "soundList"
        Layout.fillWidth: true
        Layout.fillHeight: true
        implicitHeight: 200
        clip: true
        model: card.sounds.rows
        spacing: 2
        activeFocusOnTab: true
        boundsBehavior: Flickable.StopAtBounds
        currentIndex: card.sounds.place
        keyNavigationEnabled: false
        Accessible.role: Accessible.List
        Accessible.name: qsTr("Sounds of the board")
        ScrollBar.vertical: ScrollBar {}

        function go(by: int) {
            const wanted = Math.max(0, Math.min(count - 1, currentIndex + by));
            if (count > 0)
                card.sounds.current = card.sounds.rows.at(wanted).value;
        }
        Keys.onUpPressed: go(-1)
        Keys.onDownPressed: go(1)
        Keys.onDeletePressed: card.sounds.remove()

        delegate: SoundRow {
            width: list.width
            ring: list.activeFocus && row.current
            onClicked: card.sounds.current = row.value
        }
    }
    RowLayout {
        Layout.fillWidth: true
        spacing: 6
        PushButton {
            Layout.fillWidth: true
            symbol: "plus"
            text: qsTr("New")
            Accessible.name: qsTr("New sound")
            hint: qsTr("New sound")
            onClicked: card.sounds.add()
        }
        PushButton {
            symbol: "copy"
            enabled: card.sounds.place >= 0
            Accessible.name: qsTr("Duplicate sound")
            hint: qsTr("Duplicate sound")
            onClicked: card.sounds.duplicate()
        }
        PushButton {
            symbol: "trash"
            enabled: card.sounds.canRemove
            Accessible.name: qsTr("Delete sound")
            hint: qsTr("Delete sound")
            onClicked: card.sounds.remove()
        }
    }
    PushButton {
        Layout.fillWidth: true
        text: qsTr("Use for every key")
        enabled: card.sounds.place >= 0 && !card.sounds.everywhere
        onClicked: card.sounds.useForAllKeys()
    }
}
