// What the edited stroke is mixed of.
import QtQuick
import QtQuick.Layouts
import Vornic

Card {
    id: card

    required property LayersAdapter layers

    RowLayout {
        Layout.fillWidth: true
        SectionTitle {
            Layout.fillWidth: true
            text: qsTr("Layers")
        }
        PushButton {
            symbol: "plus"
            text: qsTr("Layer")
            enabled: card.layers.canAdd
            Accessible.name: qsTr("Add a layer")
            onClicked: card.layers.add()
        }
    }
    SettingRow {
        Layout.fillWidth: true
        title: qsTr("Line up the attacks")
        note: qsTr("Snap every layer's first peak together so mixed recordings don't cancel each other out")
        checked: card.layers.aligned
        onToggled: on => card.layers.aligned = on
    }
    Label {
        Layout.fillWidth: true
        visible: card.layers.rows.count === 0
        text: qsTr("No layers: this stroke is silent.")
        secondary: true
    }
    Repeater {
        model: card.layers.rows
        delegate: LayerRow {
            Layout.fillWidth: true
            layers: card.layers
            onChoose: recordings.ask(index)
        }
    }
    Loader {
        id: recordings

        function ask(place) {
            active = true;
            item.place = place;
            item.open();
        }
        active: false
        sourceComponent: RecordingsDialog { layers: card.layers }
    }
}
