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
        padding: 24

        ColumnLayout {
            spacing: 4
            Label {
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
        RowLayout {
            Layout.fillWidth: true
            spacing: 12
            Card {
                Layout.fillWidth: true
                padding: 6
                BoardList {
                    Layout.fillWidth: true
                    boards: view.app.board.boards
                    details: true
                    onPicked: id => view.app.board.select(id)
                }
                Label {
                    Layout.fillWidth: true
                    visible: view.app.board.boards.count === 0
                    text: qsTr("No sound pack was found. Install the package bucklespring-data, then start Vornic again.")
                    secondary: true
                }
            }
        }
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

        SectionTitle { text: qsTr("Make it yours") }
        Card {
            Layout.fillWidth: true
            GridLayout {
                Layout.fillWidth: true
                columns: 2
                columnSpacing: 20
                rowSpacing: 14
                Label {
                    Layout.alignment: Qt.AlignTop
                    text: qsTr("Feel")
                }
                FeelChoice {
                    Layout.fillWidth: true
                    app: view.app
                }
                Label { text: qsTr("Deeper") }
                ValueSlider {
                    Layout.fillWidth: true
                    from: -1
                    to: 1
                    origin: 0
                    value: view.app.tweaks.deeper
                    Accessible.name: qsTr("Deeper")
                    onMoved: view.app.tweaks.deeper = value
                }
                Label { text: qsTr("Crisper") }
                ValueSlider {
                    Layout.fillWidth: true
                    from: -1
                    to: 1
                    origin: 0
                    value: view.app.tweaks.crisper
                    Accessible.name: qsTr("Crisper")
                    onMoved: view.app.tweaks.crisper = value
                }
            }
        }

        GridLayout {
            Layout.fillWidth: true
            columns: 2
            columnSpacing: 20
            rowSpacing: 14
            Label { text: qsTr("Where it sits") }
            PlacementChoice {
                Layout.fillWidth: true
                app: view.app
            }
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
