// One part of what makes a sound, scrolled where it is longer than the window.
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Vornic

Flickable {
    id: page

    required property StudioAdapter studio
    required property string section
    // A control that the keyboard comes to is brought into view.
    readonly property Item focused: Window.activeFocusItem

    contentHeight: column.implicitHeight
    boundsBehavior: Flickable.StopAtBounds
    clip: true
    ScrollBar.vertical: ScrollBar {}
    onSectionChanged: contentY = 0
    onFocusedChanged: {
        let inside = false;
        for (let item = focused; item; item = item.parent)
            inside = inside || item === column;
        if (!inside)
            return;
        const top = focused.mapToItem(column, 0, 0).y;
        if (top < contentY + 8)
            contentY = Math.max(0, top - 8);
        else if (top + focused.height > contentY + height - 8)
            contentY = Math.max(0, Math.min(contentHeight - height, top + focused.height - height + 8));
    }

    ColumnLayout {
        id: column
        width: page.width
        spacing: 12

        EqualizerCard {
            Layout.fillWidth: true
            visible: page.section === "tone"
            equalizer: page.studio.equalizer
        }
        SlidersCard {
            Layout.fillWidth: true
            visible: page.section === "tone"
            title: qsTr("Shape")
            rows: page.studio.shape.chain
            onMoved: (field, value) => page.studio.shape.setChain(field, value)
        }
        LayersCard {
            Layout.fillWidth: true
            visible: page.section === "layers"
            layers: page.studio.layers
        }
        PartsCard {
            Layout.fillWidth: true
            visible: page.section === "switch"
            rows: page.studio.parts.switchParts
            onPicked: (part, value) => page.studio.parts.setSwitchPart(part, value)
        }
        SlidersCard {
            Layout.fillWidth: true
            visible: page.section === "switch"
            title: qsTr("Character of this sound")
            rows: page.studio.shape.character
            onMoved: (field, value) => page.studio.shape.setCharacter(field, value)
        }
        BoardCards {
            Layout.fillWidth: true
            visible: page.section === "board"
            studio: page.studio
        }
    }
}
