// One of the program's symbols, in any colour.
import QtQuick
import QtQuick.Controls.impl
import Vornic

ColorImage {
    required property string symbol
    property int size: 18

    source: "qrc:/qt/qml/Vornic/icons/" + symbol + ".svg"
    sourceSize: Qt.size(size, size)
    width: size
    height: size
    color: Theme.text
    Accessible.ignored: true
}
