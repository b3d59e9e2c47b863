// Choices under a title. `rows` is a list of { value, text, options, now }.
import QtQuick
import QtQuick.Layouts
import Vornic

Card {
    id: card

    required property string title
    required property var rows
    signal picked(string part, string value)

    SectionTitle { text: card.title }
    Repeater {
        model: card.rows
        delegate: RowLayout {
            id: row

            required property var modelData

            Layout.fillWidth: true
            Label {
                Layout.preferredWidth: 64
                text: row.modelData.text
            }
            Dropdown {
                Layout.fillWidth: true
                implicitWidth: 120
                name: row.modelData.text
                options: row.modelData.options
                value: row.modelData.now
                onPicked: v => card.picked(row.modelData.value, v)
            }
        }
    }
    Item { Layout.fillHeight: true }
}
