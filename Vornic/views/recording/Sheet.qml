// A dialog over the Studio.
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Templates as T
import Vornic

Popup {
    parent: T.Overlay.overlay
    anchors.centerIn: parent
    modal: true
    focus: true
    padding: 20
    closePolicy: Popup.NoAutoClose

    background: Rectangle {
        radius: Theme.radius + 4
        color: Theme.window
        border.color: Theme.line
    }
    T.Overlay.modal: Rectangle {
        color: "#80000000"
    }
}
