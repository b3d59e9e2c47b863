// Sliders under a title, in two columns. `rows` holds { text, unit, from, to, origin, now }.
import QtQuick
import QtQuick.Layouts
import Vornic

Card {
    id: card

    required property string title
    required property RowsModel rows
    signal moved(int place, real value)

    SectionTitle { text: card.title }
    GridLayout {
        Layout.fillWidth: true
        columns: 2
        columnSpacing: 24
        rowSpacing: 2
        Repeater {
            model: card.rows
            delegate: SliderRow {
                required property var row
                required property int index

                Layout.fillWidth: true
                Layout.preferredWidth: 200
                labelWidth: 64
                name: row.text
                unit: row.unit
                from: row.from
                to: row.to
                origin: row.origin
                value: row.now
                onMoved: v => card.moved(index, v)
            }
        }
    }
}
