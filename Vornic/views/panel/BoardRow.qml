// One board of the list: picking it makes it current.
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Vornic

RadioDelegate {
    id: row

    required property string boardId
    required property string name
    required property string detail
    required property color colour
    required property bool mine
    required property bool current
    // The keyboard's place in the list.
    property bool marked: false
    signal picked(string id)

    implicitHeight: detail === "" ? 36 : 46
    leftPadding: 10
    rightPadding: 10
    topPadding: 4
    bottomPadding: 4
    checked: current
    hoverEnabled: true
    focusPolicy: Qt.NoFocus
    text: name
    indicator: null
    Accessible.name: mine ? name + ", " + qsTr("Yours") : name
    Accessible.description: detail
    Accessible.onToggleAction: row.clicked()
    onClicked: {
        checked = Qt.binding(() => current);
        picked(boardId);
    }

    contentItem: RowLayout {
        spacing: 10
        KeycapPicture {
            Layout.preferredWidth: 24
            Layout.preferredHeight: 24
            colour: row.colour
        }
        ColumnLayout {
            Layout.fillWidth: true
            spacing: 0
            Text {
                Layout.fillWidth: true
                text: row.name
                textFormat: Text.PlainText
                color: Theme.text
                font.pixelSize: Theme.body
                font.weight: row.current ? Font.DemiBold : Font.Normal
                elide: Text.ElideRight
            }
            Text {
                Layout.fillWidth: true
                visible: text !== ""
                text: row.detail
                textFormat: Text.PlainText
                color: Theme.secondary
                font.pixelSize: Theme.small
                elide: Text.ElideRight
            }
        }
        YoursTag { visible: row.mine }
        Symbol {
            symbol: "check"
            visible: row.current
        }
    }
    background: Rectangle {
        radius: Theme.radius
        color: row.current ? Theme.selected : row.hovered ? Theme.hover : "transparent"
        border.width: row.current ? 2 : 0
        border.color: Theme.focus
        FocusRing {
            visible: row.marked
            anchors.margins: 0
        }
    }
}
