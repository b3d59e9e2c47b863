// One board to pick, in a keycap, with a button that plays it.
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Vornic

RadioDelegate {
    id: card

    required property string boardId
    required property string name
    required property string description
    required property color colour
    required property bool mine
    required property bool current
    // Without the line about it, which then is its hint.
    property bool compact: false
    signal picked()
    signal played()

    implicitHeight: compact ? 44 : 60
    padding: compact ? 6 : 8
    rightPadding: 8
    checked: current
    hoverEnabled: true
    focusPolicy: Qt.TabFocus
    text: name
    indicator: null
    Accessible.name: mine ? name + ", " + qsTr("Yours") : name
    Accessible.description: description
    Accessible.onToggleAction: card.clicked()
    onClicked: {
        checked = Qt.binding(() => current);
        picked();
    }

    contentItem: RowLayout {
        spacing: 10
        KeycapPicture {
            Layout.preferredWidth: card.compact ? 30 : 38
            Layout.preferredHeight: Layout.preferredWidth
            colour: card.colour
        }
        ColumnLayout {
            Layout.fillWidth: true
            spacing: 0
            Label {
                Layout.fillWidth: true
                text: card.name
                font.weight: Font.DemiBold
                wrapMode: card.compact ? Text.Wrap : Text.NoWrap
                maximumLineCount: card.compact ? 2 : 1
                lineHeight: 0.9
                elide: Text.ElideRight
                Accessible.ignored: true
                Hint {
                    wanted: card.hovered && (card.compact || parent.truncated)
                    text: card.compact ? card.description : card.name
                }
            }
            Label {
                Layout.fillWidth: true
                visible: text !== "" && !card.compact
                text: card.description
                secondary: true
                font.pixelSize: Theme.small
                maximumLineCount: 2
                lineHeight: 0.95
                elide: Text.ElideRight
                Accessible.ignored: true
            }
        }
        YoursTag {
            visible: card.mine
        }
        PushButton {
            symbol: "play"
            implicitHeight: 28
            implicitWidth: 28
            leftPadding: 4
            rightPadding: 4
            Accessible.name: qsTr("Play %1").arg(card.name)
            onClicked: card.played()
        }
    }
    background: Rectangle {
        radius: Theme.radius + 2
        color: card.current ? Theme.selected : card.hovered ? Theme.hover : Theme.surface
        border.width: card.current ? 2 : 1
        border.color: card.current ? Theme.focus : Theme.edge
        FocusRing { control: card }
    }
}
