// Sliders under a title. `rows` is a list of { value, text, unit, from, to, origin, now }.
import QtQuick
import QtQuick.Layouts
import Vornic

Card {
    id: card

    required property string title
    required property var rows
    signal moved(string field, real value)

    SectionTitle { text: card.title }
    Repeater {
        model: card.rows
        delegate: SliderRow {
            required property var modelData

            Layout.fillWidth: true
            name: modelData.text
            unit: modelData.unit
            from: modelData.from
            to: modelData.to
            origin: modelData.origin
            value: modelData.now
            onMoved: v => card.moved(modelData.value, v)
        }
    }
    Item { Layout.fillHeight: true }
}
