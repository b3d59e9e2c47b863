// "Turn on Input Monitoring…": what it means, read before the system asks for a password; and how to
// take it back.
import QtQuick
import QtQuick.Layouts
import Vornic

FocusScope {
    id: page

    required property Adapters app

    focus: true
    implicitWidth: 560
    // The whole explanation, in most types.
    implicitHeight: 640

    Rectangle {
        anchors.fill: parent
        color: Theme.window
    }

    ScrollPage {
        anchors { left: parent.left; right: parent.right; top: parent.top; bottom: footer.top }

        Label {
            Layout.fillWidth: true
            text: qsTr("Input Monitoring")
            font.pixelSize: Theme.heading
            font.weight: Font.Bold
            Accessible.role: Accessible.Heading
        }
        PermissionOutcome {
            Layout.fillWidth: true
            app: page.app
        }
        Repeater {
            model: page.app.permission.points
            delegate: ColumnLayout {
                id: point

                required property var modelData

                Layout.fillWidth: true
                spacing: 4
                SectionTitle {
                    visible: text !== ""
                    text: point.modelData.heading
                }
                Label {
                    Layout.fillWidth: true
                    text: point.modelData.text
                    lineHeight: 1.15
                }
            }
        }
    }
    Rectangle {
        anchors.bottom: footer.top
        width: parent.width
        height: 1
        color: Theme.line
    }
    Item {
        id: footer
        anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
        height: Theme.control + 24

        PermissionButtons {
            anchors.fill: parent
            anchors.leftMargin: 24
            anchors.rightMargin: 24
            app: page.app
        }
    }
    Keys.onEscapePressed: page.app.windows.closeWindow(page.Window.window)
}
