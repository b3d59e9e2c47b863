// A board that is not kept yet: what it looks like, what is in it, and whose it is.
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Vornic

ColumnLayout {
    id: column

    required property PreviewAdapter preview
    // How wide the window lets it be: heights that follow a width within layouts come too late.
    required property real room

    spacing: 14
    RowLayout {
        spacing: 12
        Rectangle {
            Layout.preferredWidth: 14
            Layout.preferredHeight: 14
            radius: 7
            color: column.preview.colour
            border.color: Theme.line
        }
        Label {
            Layout.fillWidth: true
            text: column.preview.name
            font.pixelSize: Theme.heading
            font.weight: Font.Bold
            elide: Text.ElideRight
            wrapMode: Text.Wrap
            maximumLineCount: 2
            Accessible.role: Accessible.Heading
        }
    }
    Label {
        Layout.fillWidth: true
        visible: text !== ""
        text: column.preview.origin
        secondary: true
    }
    Label {
        Layout.fillWidth: true
        visible: text !== ""
        text: column.preview.detail
        elide: Text.ElideRight
        maximumLineCount: 2
    }
    Keyboard {
        Layout.fillWidth: true
        Layout.preferredHeight: heightFor(column.room)
        Layout.minimumHeight: Layout.preferredHeight
        source: column.preview.keyboard
    }
    Label {
        Layout.fillWidth: true
        text: column.preview.contents
        secondary: true
    }
    ScrollView {
        id: scroll
        Layout.fillWidth: true
        Layout.fillHeight: true
        clip: true
        contentWidth: availableWidth
        ColumnLayout {
            width: scroll.availableWidth
            spacing: 12
            PackReport {
                Layout.fillWidth: true
                visible: column.preview.origin !== ""
                preview: column.preview
            }
            Label {
                Layout.fillWidth: true
                text: column.preview.credits
                secondary: true
                font.pixelSize: Theme.small
            }
        }
    }
    Label {
        Layout.fillWidth: true
        text: qsTr("Your keys play it now. Nothing is kept until you say so.")
        secondary: true
    }
}
