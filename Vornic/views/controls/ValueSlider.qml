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
    // Whether a double click brings it back to its origin, which a mark then shows.
    property bool resets: false

    function reset() {
        value = origin;
        moved();
    }

    implicitHeight: Theme.control
    implicitWidth: 160
    stepSize: (to - from) / 20
    snapMode: Slider.NoSnap
    wheelEnabled: activeFocus
    // A click leaves no focus: arrow keys that are typed to be heard must move nothing.
    focusPolicy: Qt.TabFocus
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

    TapHandler {
        enabled: slider.resets
        acceptedButtons: Qt.LeftButton
        // After the slider, which goes where it is clicked.
        onDoubleTapped: Qt.callLater(slider.reset)
    }

    background: Rectangle {
        x: slider.leftPadding
        y: slider.topPadding + slider.availableHeight / 2 - height / 2
        width: slider.availableWidth
        height: 4
        radius: 2
        color: Theme.groove
        Rectangle {
            visible: slider.resets
            x: slider.start * parent.width - width / 2
            y: (parent.height - height) / 2
            width: 2
            height: 14
            color: Theme.edge
        }
        Rectangle {
            x: Math.min(slider.start, slider.visualPosition) * parent.width
            width: Math.abs(slider.visualPosition - slider.start) * parent.width
            height: parent.height
            radius: 2
            color: Theme.graph
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
