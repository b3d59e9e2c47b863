// The gallery's buttons.
import QtQuick
import QtQuick.Layouts
import Vornic

Card {
    RowLayout {
        spacing: Theme.gap
        PushButton { text: qsTr("Plain") }
        PushButton { text: qsTr("Prominent"); prominent: true }
        PushButton { text: qsTr("With a symbol"); symbol: "export" }
        PushButton { symbol: "trash"; Accessible.name: qsTr("Delete") }
        PushButton { text: qsTr("Checked"); checkable: true; checked: true; prominent: true }
    }
    RowLayout {
        spacing: Theme.gap
        PushButton { text: qsTr("Pressed"); down: true }
        PushButton { text: qsTr("Pressed"); down: true; prominent: true }
        PushButton { text: qsTr("Disabled"); enabled: false }
        PushButton { text: qsTr("Disabled"); prominent: true; enabled: false }
        PushButton { symbol: "undo"; enabled: false; Accessible.name: qsTr("Undo") }
    }
}
