// A surface that holds what belongs together.
import QtQuick
import QtQuick.Layouts
import Vornic

Rectangle {
    default property alias content: column.data
    property int padding: 12

    implicitHeight: column.implicitHeight + 2 * padding
    implicitWidth: column.implicitWidth + 2 * padding
    radius: Theme.radius + 2
    color: Theme.surface
    border.color: Theme.line

    ColumnLayout {
        id: column
        anchors.fill: parent
        anchors.margins: parent.padding
        spacing: Theme.gap
    }
}
