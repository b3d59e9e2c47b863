// How a key feels on the way down; picked again, the board's own feel comes back.
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Vornic

ColumnLayout {
    id: choice

    required property Adapters app

    spacing: 2
    Accessible.role: Accessible.Grouping
    Accessible.name: qsTr("Feel")
    Repeater {
        model: choice.app.tweaks.feels
        delegate: RadioDelegate {
            id: option

            required property var modelData

            Layout.fillWidth: true
            implicitHeight: 32
            leftPadding: 8
            focusPolicy: Qt.TabFocus
            hoverEnabled: true
            checked: choice.app.tweaks.feel === modelData.value
            text: modelData.text
            Accessible.name: text
            Accessible.onToggleAction: option.clicked()
            onClicked: {
                const wanted = choice.app.tweaks.feel === modelData.value ? -1 : modelData.value;
                checked = Qt.binding(() => choice.app.tweaks.feel === modelData.value);
                choice.app.tweaks.feel = wanted;
            }
            indicator: null
            contentItem: Row {
                spacing: 10
                Rectangle {
                    anchors.verticalCenter: parent.verticalCenter
                    width: 18
                    height: 18
                    radius: 9
                    color: "transparent"
                    border.color: option.checked ? Theme.text : Theme.secondary
                    Rectangle {
                        anchors.centerIn: parent
                        visible: option.checked
                        width: 10
                        height: 10
                        radius: 5
                        color: Theme.text
                    }
                }
                Text {
                    anchors.verticalCenter: parent.verticalCenter
                    text: option.text
                    textFormat: Text.PlainText
                    color: Theme.text
                    font.pixelSize: Theme.body
                }
            }
            background: Rectangle {
                radius: Theme.radius
                color: option.hovered ? Theme.hover : "transparent"
                FocusRing {
                    control: option
                    anchors.margins: 0
                }
            }
        }
    }
}
