// A value between two ends, by mouse and arrow keys, and by the wheel once it has the keyboard: a
// page that scrolls past the pointer must not turn it.
import QtQuick
import QtQuick.Controls.Basic
import Vornic

Slider {
    id: slider

    // Where the filled part of the groove begins: the lower end, or the middle.
    property real origin: from
    readonly property real start: (origin - from) / (to - from)

    implicitHeight: Theme.control
    implicitWidth: 160
    stepSize: (to - from) / 20
    snapMode: Slider.NoSnap
    wheelEnabled: activeFocus
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    // A screen reader's own way to move the handle would tell nobody.
    Accessible.onIncreaseAction: {
        slider.increase();
        slider.moved();
    }
    Accessible.onDecreaseAction: {
        slider.decrease();
        slider.moved();
    }
    opacity: enabled ? 1 : 0.45

    background: Rectangle {
        x: slider.leftPadding
        y: slider.topPadding + slider.availableHeight / 2 - height / 2
        width: slider.availableWidth
        height: 4
        radius: 2
        color: Theme.track
        Rectangle {
            x: Math.min(slider.start, slider.visualPosition) * parent.width
            width: Math.abs(slider.visualPosition - slider.start) * parent.width
            height: parent.height
            radius: 2
            color: Theme.accent
        }
    }
    handle: Rectangle {
        x: slider.leftPadding + slider.visualPosition * (slider.availableWidth - width)
        y: slider.topPadding + slider.availableHeight / 2 - height / 2
        width: 18
        height: 18
        radius: 9
        color: Theme.raised
        border.color: slider.hovered || slider.pressed ? Theme.text : Theme.secondary
        FocusRing {
            control: slider
            radius: height / 2
        }
    }
}
