// How a key feels on the way down, as force curves; picked again, the board's own comes back.
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Vornic

RowLayout {
    id: choice

    required property Adapters app
    readonly property int own: app.tweaks.ownFeel
    readonly property int chosen: app.tweaks.feel < 0 ? own : app.tweaks.feel

    spacing: 10
    Accessible.role: Accessible.Grouping
    Accessible.name: qsTr("Feel")
    Repeater {
        model: choice.app.tweaks.feels
        delegate: RadioDelegate {
            id: option

            required property var modelData
            readonly property bool isOwn: modelData.value === choice.own

            Layout.fillWidth: true
            Layout.preferredWidth: 1
            implicitHeight: 94
            padding: 6
            focusPolicy: Qt.TabFocus
            hoverEnabled: true
            checked: choice.chosen === modelData.value
            text: modelData.text
            Accessible.name: text
            Accessible.description: isOwn ? qsTr("The board's own") : ""
            Accessible.onToggleAction: option.clicked()
            onClicked: {
                const wanted = choice.app.tweaks.feel === modelData.value || isOwn ? -1 : modelData.value;
                checked = Qt.binding(() => choice.chosen === modelData.value);
                choice.app.tweaks.feel = wanted;
            }
            indicator: null
            contentItem: ColumnLayout {
                spacing: 2
                Label {
                    Layout.fillWidth: true
                    horizontalAlignment: Text.AlignRight
                    text: option.isOwn ? qsTr("Its own") : " "
                    secondary: true
                    font.pixelSize: 11
                    Accessible.ignored: true
                }
                ForceCurve {
                    Layout.fillWidth: true
                    feel: option.modelData.value
                    ink: Theme.graph
                }
                Label {
                    Layout.fillWidth: true
                    Layout.fillHeight: true
                    text: option.text
                    font.pixelSize: Theme.small
                    verticalAlignment: Text.AlignTop
                    Accessible.ignored: true
                }
            }
            background: Rectangle {
                radius: Theme.radius
                color: option.checked ? Theme.selected : option.hovered ? Theme.hover : Theme.surface
                border.width: option.checked ? 2 : 1
                border.color: option.checked ? Theme.focus : Theme.edge
                FocusRing { control: option }
            }
        }
    }
}
