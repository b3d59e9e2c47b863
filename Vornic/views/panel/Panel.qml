// The everyday choices, one below the other: opened from the tray.
import QtQuick
import QtQuick.Layouts
import Vornic

FocusScope {
    id: panel

    required property Adapters app

    focus: true
    implicitWidth: 340
    implicitHeight: body.wholeHeight + footer.height

    Rectangle {
        anchors.fill: parent
        color: Theme.window
    }
    PanelBody {
        id: body
        anchors.top: parent.top
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: footer.top
        focus: true
        app: panel.app
    }
    Item {
        id: footer
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        height: buttons.implicitHeight + 24

        Rectangle {
            anchors.left: parent.left
            anchors.right: parent.right
            height: 1
            color: Theme.line
        }
        RowLayout {
            id: buttons
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            anchors.margins: Theme.margin
            spacing: Theme.gap
            PushButton {
                text: qsTr("Open Vornic…")
                onClicked: panel.app.windows.openVornic()
            }
            PushButton {
                text: qsTr("Settings")
                onClicked: panel.app.windows.openSettings()
            }
            Item { Layout.fillWidth: true }
            PushButton {
                text: qsTr("Quit")
                onClicked: panel.app.windows.quit()
            }
        }
    }
    // The desktop gives the tray's panel none.
    Rectangle {
        anchors.fill: parent
        color: "transparent"
        border.color: Theme.edge
    }
    Keys.onEscapePressed: panel.app.windows.dismissPanel()
}
