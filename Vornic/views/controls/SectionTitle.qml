// Names what follows.
import QtQuick
import Vornic

Label {
    secondary: true
    font.pixelSize: Theme.small
    font.weight: Font.DemiBold
    Accessible.role: Accessible.Heading
}
