// How to bring in a sound pack.
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Vornic

Sheet {
    id: sheet

    width: Math.min(520, parent ? parent.width - 40 : 520)

    component Paragraph: Label {
        Layout.fillWidth: true
    }

    contentItem: ColumnLayout {
        spacing: 12
        Label {
            text: qsTr("Bringing in a sound pack")
            font.pixelSize: Theme.title
            font.weight: Font.Bold
            Accessible.role: Accessible.Heading
        }
        Paragraph { text: qsTr("A sound pack is a keyboard that somebody recorded for another program. Vornic reads packs for Mechvibes, mechvibes-dx, KeyEcho, keyboardsounds, Neptune and daktilo, folders of bucklespring, and instruments in SFZ and Decent Sampler.") }
        Paragraph { text: qsTr("Drop it on a window of Vornic, or choose \"Import…\": the pack's folder, the archive that it came in (zip or tar), or the file in it that describes it. Several packs dropped together, or a folder of packs, are listed, and you take those that you want.") }
        Paragraph { text: qsTr("Nothing is kept before you say so: your keys play the pack, and you read who made it, under which licence, and what was missing or could be mended. Kept, it is a keyboard like any other, to be changed, exported or deleted.") }
        Paragraph { text: qsTr("A pack that states no licence belongs to whoever made it: ask them before you pass it on. Vornic fetches nothing by itself.") }
        PushButton {
            Layout.alignment: Qt.AlignRight
            focus: true
            text: qsTr("Close")
            onClicked: sheet.close()
            Keys.onEscapePressed: sheet.close()
        }
    }
}
