// A stroke as it sounds at one velocity; a click plays it.
import QtQuick
import QtQuick.Controls.Basic
import Vornic

AbstractButton {
    id: view

    required property var row

    implicitHeight: 76
    padding: 8
    focusPolicy: Qt.TabFocus
    hoverEnabled: true
    Accessible.name: qsTr("Play: %1").arg(row.text)
    Accessible.description: caption.text

    contentItem: Item {
        Label {
            id: title
            text: view.row.text
            secondary: true
            font.pixelSize: Theme.small
            Accessible.ignored: true
        }
        Label {
            id: caption
            anchors.right: parent.right
            text: view.row.strips.length === 0 ? qsTr("Nothing to hear") : qsTr("%1 ms").arg(Math.round(view.row.millis))
            secondary: true
            font.pixelSize: Theme.small
            Accessible.ignored: true
        }
        Canvas {
            id: canvas

            readonly property color ink: Theme.graph
            readonly property var strips: view.row.strips

            anchors.fill: parent
            anchors.topMargin: title.height + 2
            onInkChanged: requestPaint()
            onStripsChanged: requestPaint()
            onPaint: {
                const context = getContext("2d");
                context.reset();
                context.fillStyle = ink;
                const step = width / view.row.most, middle = height / 2;
                for (let at = 0; at < strips.length; ++at) {
                    // The tail is far below the strike: drawn straight, nothing would be seen of it.
                    const half = Math.max(0.5, Math.min(1, Math.pow(strips[at], 0.6)) * middle);
                    context.fillRect(at * step, middle - half, Math.max(1, step - 0.5), 2 * half);
                }
            }
        }
    }
    background: Rectangle {
        radius: Theme.radius
        color: view.hovered ? Theme.hover : Theme.surface
        border.color: Theme.line
        FocusRing { control: view }
    }
}
