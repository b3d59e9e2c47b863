// Picks a keyboard and adjusts it lightly.
import QtQuick
import QtQuick.Layouts
import Vornic

FocusScope {
    id: view

    required property Adapters app

    focus: true
    Keys.onEscapePressed: view.app.windows.closeWindow(view.Window.window)
    implicitWidth: 640
    implicitHeight: page.wholeHeight

    Rectangle {
        anchors.fill: parent
        color: Theme.window
    }

    ScrollPage {
        id: page
        anchors.fill: parent
        padding: 16
        spacing: 10

        RowLayout {
            spacing: 20
            ColumnLayout {
                Layout.fillWidth: true
                Layout.fillHeight: true
                spacing: 6
                Label {
                    Layout.fillWidth: true
                    text: qsTr("Pick a keyboard")
                    font.pixelSize: Theme.heading
                    font.weight: Font.Bold
                    Accessible.role: Accessible.Heading
                }
                Label {
                    Layout.fillWidth: true
                    text: qsTr("Press play to hear one, or just start typing.")
                    secondary: true
                }
                Item { Layout.fillHeight: true }
                RowLayout {
                    spacing: Theme.gap
                    PushButton {
                        symbol: "play"
                        text: qsTr("Play")
                        prominent: true
                        enabled: view.app.board.boards.count > 0
                        onClicked: view.app.board.playPhrase()
                    }
                    ImportButton { app: view.app }
                }
            }
            Keyboard {
                Layout.preferredWidth: Math.round(Math.min(760, page.width * 0.64))
                Layout.preferredHeight: heightFor(Layout.preferredWidth)
                source: view.app.keyboard
            }
        }
        ErrorLine {
            Layout.fillWidth: true
            text: view.app.status.lastError
            onDismissed: view.app.status.dismissError()
        }
        FileLine {
            Layout.fillWidth: true
            app: view.app
        }
        BoardGrid {
            Layout.fillWidth: true
            columns: page.width > 900 ? 3 : 2
            rows: columns === 3 ? 2 : 3
            visible: view.app.board.boards.count > 0
            app: view.app
        }
        Label {
            Layout.fillWidth: true
            visible: view.app.board.boards.count === 0
            text: qsTr("No sound pack was found. Install the package bucklespring-data, then start Vornic again.")
            secondary: true
        }

        SectionTitle {
            text: qsTr("Make it yours")
            Layout.bottomMargin: -6
        }
        Card {
            Layout.fillWidth: true
            padding: 10
            RowLayout {
                spacing: 12
                Label { text: qsTr("Feel") }
                FeelChoice {
                    Layout.fillWidth: true
                    app: view.app
                }
            }
            RowLayout {
                spacing: 24
                TweakRow {
                    Layout.fillWidth: true
                    less: qsTr("Brighter")
                    more: qsTr("Deeper")
                    value: view.app.tweaks.deeper
                    onMoved: value => view.app.tweaks.deeper = value
                }
                TweakRow {
                    Layout.fillWidth: true
                    less: qsTr("Softer")
                    more: qsTr("Crisper")
                    value: view.app.tweaks.crisper
                    onMoved: value => view.app.tweaks.crisper = value
                }
            }
        }

        RowLayout {
            Layout.fillWidth: true
            spacing: 12
            Label { text: qsTr("Where it sits") }
            PlacementChoice {
                Layout.preferredWidth: 210
                app: view.app
            }
            Item { Layout.preferredWidth: 4 }
            Label { text: qsTr("Volume") }
            ValueSlider {
                Layout.fillWidth: true
                value: view.app.settings.volume
                Accessible.name: qsTr("Volume")
                onMoved: view.app.settings.volume = value
            }
        }

        Rectangle {
            Layout.fillWidth: true
            implicitHeight: 1
            color: Theme.line
        }
        RowLayout {
            spacing: Theme.margin
            Label {
                Layout.fillWidth: true
                secondary: true
                text: view.app.settings.advanced ? qsTr("The advanced editor is on.")
                                        : qsTr("Want to build your own, part by part? Turn on the advanced editor in Settings.")
            }
            PushButton {
                text: view.app.settings.advanced ? qsTr("Open Studio") : qsTr("Settings")
                onClicked: view.app.settings.advanced ? view.app.windows.openStudio() : view.app.windows.openSettings()
            }
        }
    }
}
