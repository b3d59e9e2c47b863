// What lies in the case.
import QtQuick
import QtQuick.Layouts
import Vornic

Card {
    id: card

    required property PartsAdapter parts

    SectionTitle { text: qsTr("Foam") }
    GridLayout {
        Layout.fillWidth: true
        columns: 4
        columnSpacing: 6
        rowSpacing: 6
        Repeater {
            model: card.parts.foams
            delegate: Tile {
                required property var row

                Layout.fillWidth: true
                Layout.preferredWidth: 100
                exclusive: false
                text: row.text
                note: row.note
                chosen: row.now
                onClicked: card.parts.setFoam(row.value, !row.now)
            }
        }
    }
}
