// One of a few, side by side. `options` is a list of { value, text }.
import QtQuick
import QtQuick.Controls.Basic
import Vornic

Control {
    id: choice

    property var options: []
    property var value
    property string name: ""
    signal picked(var value)

    implicitHeight: Theme.control
    implicitWidth: 240
    Accessible.role: Accessible.Grouping
    Accessible.name: name

    background: Rectangle {
        radius: Theme.radius
        color: Theme.track
    }
    contentItem: Row {
        Repeater {
            model: choice.options
            delegate: RadioButton {
                id: option

                required property var modelData

                width: choice.width / choice.options.length
                height: choice.height
                checked: modelData.value === choice.value
                text: modelData.text
                focusPolicy: Qt.TabFocus
                hoverEnabled: true
                // The value comes from the model: a click asks for it and waits for the answer.
                onClicked: {
                    checked = Qt.binding(() => modelData.value === choice.value);
                    choice.picked(modelData.value);
                }
                indicator: null
                Accessible.name: text
                Accessible.onToggleAction: option.clicked()
                contentItem: Text {
                    leftPadding: 4
                    rightPadding: 4
                    text: option.text
                    textFormat: Text.PlainText
                    color: Theme.text
                    font.pixelSize: Theme.body
                    font.weight: option.checked ? Font.DemiBold : Font.Normal
                    elide: Text.ElideRight
                    horizontalAlignment: Text.AlignHCenter
                    verticalAlignment: Text.AlignVCenter
                }
                background: Rectangle {
                    anchors.fill: parent
                    anchors.margins: 2
                    radius: Theme.radius - 2
                    color: option.checked ? Theme.raised : option.hovered ? Theme.hover : "transparent"
                    border.color: option.checked ? Theme.edge : "transparent"
                    FocusRing { control: option }
                }
            }
        }
    }
}
