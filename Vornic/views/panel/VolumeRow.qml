// The volume, and how loud it is just now.
import QtQuick
import QtQuick.Layouts
import Vornic

RowLayout {
    id: row

    required property Adapters app

    spacing: 12
    Label { text: qsTr("Volume") }
    ColumnLayout {
        Layout.fillWidth: true
        spacing: 0
        ValueSlider {
            Layout.fillWidth: true
            implicitHeight: 26
            value: row.app.settings.volume
            Accessible.name: qsTr("Volume")
            onMoved: row.app.settings.volume = value
        }
        LevelMeter {
            id: meter
            Layout.fillWidth: true
            Layout.leftMargin: 6
            Layout.rightMargin: 6
            implicitHeight: 4
            Accessible.name: qsTr("Loudness of the keys")
        }
    }
    Label {
        Layout.preferredWidth: 28
        horizontalAlignment: Text.AlignRight
        text: Math.round(row.app.settings.volume * 100)
        secondary: true
        wrapMode: Text.NoWrap
    }
    // It looks only while something sounds.
    Connections {
        target: row.app.keyboard
        function onStruck() {
            if (row.visible && row.Window.visibility !== Window.Hidden)
                look.start();
        }
    }
    Timer {
        id: look
        interval: 50
        repeat: true
        onTriggered: {
            const peak = row.app.status.takeLevel();
            // 48 dB; it falls slower than it rises, as meters do.
            const now = peak > 0 ? Math.max(0, 1 + 20 * Math.log10(peak) / 48) : 0;
            meter.level = Math.max(now, meter.level - 0.08);
            if (meter.level <= 0)
                stop();
        }
    }
}
