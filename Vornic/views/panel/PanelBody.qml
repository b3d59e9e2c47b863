// Everything of the panel but its footer. It scrolls where the screen is too small; the list of
// boards gives way first.
import QtQuick
import QtQuick.Layouts
import Vornic

ScrollPage {
    id: body

    required property Adapters app

    padding: Theme.margin
    spacing: 12
    least: wholeHeight - boards.implicitHeight + Math.min(boards.implicitHeight, 108)

    RowLayout {
        spacing: Theme.gap
        ColumnLayout {
            Layout.fillWidth: true
            spacing: 2
            RowLayout {
                spacing: Theme.gap
                Label {
                    text: "Vornic"
                    font.pixelSize: Theme.title
                    font.weight: Font.Bold
                    Accessible.role: Accessible.Heading
                }
                Lamp { lit: body.app.status.typing }
            }
            Label {
                Layout.fillWidth: true
                text: body.app.status.subtitle
                secondary: true
                elide: Text.ElideRight
                maximumLineCount: 2
            }
        }
        SoundsSwitch {
            Layout.alignment: Qt.AlignTop
            app: body.app
        }
    }
    Keyboard {
        Layout.fillWidth: true
        Layout.preferredHeight: heightFor(body.width - 2 * body.padding)
        source: body.app.keyboard
    }

    StatusCard {
        Layout.fillWidth: true
        app: body.app
    }
    PermissionBlock {
        Layout.fillWidth: true
        app: body.app
    }
    ErrorLine {
        Layout.fillWidth: true
        isError: false
        text: body.app.status.note
        onDismissed: body.app.status.dismissNote()
    }
    ErrorLine {
        Layout.fillWidth: true
        text: body.app.status.lastError
        onDismissed: body.app.status.dismissError()
    }
    FileLine {
        Layout.fillWidth: true
        app: body.app
    }

    ColumnLayout {
        spacing: 4
        SectionTitle { text: qsTr("Keyboard") }
        BoardList {
            id: boards
            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.minimumHeight: Math.min(implicitHeight, 108)
            Layout.preferredHeight: implicitHeight
            boards: body.app.board.boards
            onPicked: id => body.app.board.select(id)
        }
        Label {
            Layout.fillWidth: true
            visible: body.app.board.boards.count === 0
            text: qsTr("No sound pack was found. Install the package bucklespring-data, then start Vornic again.")
            secondary: true
        }
    }
    VolumeRow {
        Layout.fillWidth: true
        app: body.app
    }

    ColumnLayout {
        spacing: 6
        SectionTitle { text: qsTr("Where it sits") }
        PlacementChoice {
            Layout.fillWidth: true
            app: body.app
        }
    }
    OutputLine {
        Layout.fillWidth: true
        app: body.app
    }
}
