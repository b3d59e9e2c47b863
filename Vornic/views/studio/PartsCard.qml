// Parts to choose, one of a few each. `rows` holds { text, options, now }, `options` is a list of
// { value, text, note }.
import QtQuick
import QtQuick.Layouts
import Vornic

Card {
    id: card

    required property RowsModel rows
    signal picked(int part, int value)

    Repeater {
        model: card.rows
        delegate: ColumnLayout {
            id: part

            required property var row
            required property int index

            Layout.fillWidth: true
            spacing: 6
            SectionTitle { text: part.row.text }
            GridLayout {
                Layout.fillWidth: true
                columns: 4
                columnSpacing: 6
                rowSpacing: 6
                Repeater {
                    // The options never change, only which one is chosen.
                    model: part.row.options.length
                    delegate: Tile {
                        required property int modelData
                        readonly property var option: part.row.options[modelData]

                        Layout.fillWidth: true
                        Layout.preferredWidth: 100
                        text: option.text
                        note: option.note
                        chosen: option.value === part.row.now
                        onClicked: card.picked(part.index, option.value)
                    }
                }
                Repeater {
                    // Keeps the columns as wide as elsewhere.
                    model: Math.max(0, 4 - part.row.options.length)
                    delegate: Item {
                        Layout.fillWidth: true
                        Layout.preferredWidth: 100
                    }
                }
            }
        }
    }
}
