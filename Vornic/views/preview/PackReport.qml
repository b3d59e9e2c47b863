// What a sound pack is: whose, under what licence, and what became of it.
import QtQuick
import QtQuick.Layouts
import Vornic

GridLayout {
    id: grid

    required property PreviewAdapter preview

    columns: 2
    columnSpacing: 16
    rowSpacing: 6

    component Head: Label {
        Layout.alignment: Qt.AlignTop
        Layout.preferredWidth: 120
        secondary: true
        font.pixelSize: Theme.small
    }
    component Said: Label {
        Layout.fillWidth: true
        font.pixelSize: Theme.small
    }

    Head { text: qsTr("Made by") }
    Said { text: grid.preview.author }
    Head { text: qsTr("Licence") }
    Said { text: grid.preview.licence }
    Repeater {
        model: grid.preview.report
        delegate: RowLayout {
            id: line

            required property var modelData
            required property int index
            readonly property var before: grid.preview.report[index - 1]

            Layout.columnSpan: 2
            Layout.fillWidth: true
            spacing: grid.columnSpacing
            Head { text: line.before && line.before.head === line.modelData.head ? "" : line.modelData.head }
            Said { text: line.modelData.text }
        }
    }
}
