// One of many. `options` is a list of { value, text }.
import QtQuick
import QtQuick.Controls.Basic
import Vornic

ComboBox {
    id: box

    property var options: []
    property var value
    property string name: ""
    signal picked(var value)

    implicitHeight: Theme.control
    implicitWidth: 150
    model: options
    textRole: "text"
    valueRole: "value"
    currentIndex: options.findIndex(option => option.value === value)
    // New entries put the box on the first one.
    onModelChanged: currentIndex = Qt.binding(() => options.findIndex(option => option.value === value))
    font.pixelSize: Theme.body
    focusPolicy: Qt.TabFocus
    hoverEnabled: true
    opacity: enabled ? 1 : 0.45
    Accessible.name: name
    Accessible.description: displayText
    onActivated: index => {
        const wanted = options[index].value;
        currentIndex = Qt.binding(() => options.findIndex(option => option.value === value));
        picked(wanted);
    }

    indicator: Symbol {
        x: box.width - width - 8
        anchors.verticalCenter: parent.verticalCenter
        symbol: "caret-down"
        size: 12
        color: Theme.secondary
    }
    contentItem: Text {
        leftPadding: 10
        rightPadding: 24
        text: box.displayText
        textFormat: Text.PlainText
        font: box.font
        color: Theme.text
        elide: Text.ElideRight
        verticalAlignment: Text.AlignVCenter
    }
    background: Rectangle {
        radius: Theme.radius
        color: box.hovered ? Theme.hover : Theme.surface
        border.color: Theme.edge
        FocusRing { control: box }
    }
    delegate: ItemDelegate {
        id: item

        required property var modelData
        required property int index

        width: box.width
        height: Theme.control
        text: modelData.text
        highlighted: box.highlightedIndex === index
        contentItem: Text {
            text: item.modelData.text
            textFormat: Text.PlainText
            font.pixelSize: Theme.body
            color: Theme.text
            elide: Text.ElideRight
            verticalAlignment: Text.AlignVCenter
        }
        background: Rectangle {
            radius: Theme.radius - 2
            color: item.highlighted ? Theme.hover : "transparent"
        }
    }
    popup: Popup {
        y: box.height + 2
        width: box.width
        implicitHeight: Math.min(contentItem.implicitHeight + 8, 320)
        padding: 4
        contentItem: ListView {
            clip: true
            implicitHeight: contentHeight
            model: box.popup.visible ? box.delegateModel : null
            currentIndex: box.highlightedIndex
        }
        background: Rectangle {
            radius: Theme.radius
            color: Theme.surface
            border.color: Theme.line
        }
    }
}
