// Sliders under a title, in two columns. `rows` holds { value, text, unit, from, to, origin, now }.
import QtQuick
import QtQuick.Layouts
import Vornic

Card {
    id: card

    required property string title
    required property var rows
    signal moved(string field, real value)

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

                Layout.fillWidth: true
                Layout.preferredWidth: 200
                labelWidth: 64
                name: row.text
                unit: row.unit
                from: row.from
                to: row.to
                origin: row.origin
                value: row.now
                onMoved: v => card.moved(row.value, v)
            }
        }
    }
}
