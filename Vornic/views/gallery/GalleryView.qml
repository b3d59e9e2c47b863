// Every shared control in every state, to look at them side by side.
import QtQuick
import QtQuick.Layouts
import Vornic

FocusScope {
    id: view

    readonly property string longText: qsTr("A name that is much longer than the place that there is for it, as people write them")
    readonly property var choices: [{ value: "a", text: qsTr("One") }, { value: "b", text: qsTr("Another") }, { value: "c", text: longText }]

    focus: true
    implicitWidth: 760
    implicitHeight: 900

    Rectangle {
        anchors.fill: parent
        color: Theme.window
    }
    ScrollPage {
        id: page
        anchors.fill: parent

        SectionTitle { text: qsTr("Buttons") }
        GalleryButtons { Layout.fillWidth: true }
        SectionTitle { text: qsTr("Switches and lamps") }
        Card {
            Layout.fillWidth: true
            RowLayout {
                spacing: Theme.margin
                Toggle { Accessible.name: qsTr("Off") }
                Toggle { checked: true; Accessible.name: qsTr("On") }
                Toggle { enabled: false; Accessible.name: qsTr("Disabled") }
                Lamp {}
                Lamp { lit: true }
                YoursTag {}
            }
            SettingRow {
                Layout.fillWidth: true
                title: view.longText
                note: view.longText + ". " + view.longText + "."
                checked: true
            }
        }
        SectionTitle { text: qsTr("One of a few, one of many, a name") }
        Card {
            Layout.fillWidth: true
            Choice {
                Layout.fillWidth: true
                name: qsTr("Choice")
                options: view.choices
                value: "b"
            }
            RowLayout {
                spacing: Theme.margin
                Dropdown {
                    name: qsTr("Many")
                    options: view.choices
                    value: "c"
                }
                Dropdown {
                    enabled: false
                    name: qsTr("Disabled")
                    options: view.choices
                    value: "a"
                }
                EditableText {
                    Layout.fillWidth: true
                    name: qsTr("Name")
                    text: view.longText
                }
            }
        }
        SectionTitle { text: qsTr("Values") }
        Card {
            Layout.fillWidth: true
            ValueSlider { Layout.fillWidth: true; value: 0.6; Accessible.name: qsTr("Volume") }
            ValueSlider { Layout.fillWidth: true; from: -1; to: 1; origin: 0; value: -0.4; Accessible.name: qsTr("Deeper") }
            ValueSlider { Layout.fillWidth: true; enabled: false; value: 0.3; Accessible.name: qsTr("Disabled") }
            SliderRow { Layout.fillWidth: true; name: qsTr("Gain"); unit: "dB"; from: -24; to: 24; origin: 0; value: 3 }
            SliderRow { Layout.fillWidth: true; name: view.longText; unit: "Hz"; from: 20; to: 20000; value: 3500 }
        }
        SectionTitle { text: qsTr("Messages and type") }
        ErrorLine { Layout.fillWidth: true; text: view.longText + ". " + view.longText + "." }
        Card {
            Layout.fillWidth: true
            Label { Layout.fillWidth: true; text: view.longText; font.pixelSize: Theme.heading; font.weight: Font.Bold }
            Label { Layout.fillWidth: true; text: view.longText }
            Label { Layout.fillWidth: true; text: view.longText; secondary: true; font.pixelSize: Theme.small }
        }
        SectionTitle { text: qsTr("Symbols") }
        Card {
            Layout.fillWidth: true
            Flow {
                Layout.fillWidth: true
                spacing: 12
                Repeater {
                    model: ["caret-down", "check", "check-circle", "close", "export", "gear", "headphones", "keyboard", "keyboard-off", "lock", "mic", "play", "plus", "power", "redo", "speaker", "trash", "undo", "warning", "waveform"]
                    delegate: Symbol {
                        required property string modelData
                        symbol: modelData
                    }
                }
            }
        }
    }
}
