// The gain of the tone control over frequency, between `shown` dB above and below, and what is heard
// with everything else.
import QtQuick
import Vornic

Canvas {
    id: canvas

    required property var curve
    required property var heard
    required property real shown
    readonly property var inks: [Theme.graph, Theme.line, Theme.secondary, Theme.surface]

    Accessible.role: Accessible.Graphic
    Accessible.name: qsTr("Frequency curve")
    onCurveChanged: requestPaint()
    onHeardChanged: requestPaint()
    onInksChanged: requestPaint()

    function place(gain: real): real {
        return (1 - Math.max(-shown, Math.min(shown, gain)) / shown) * height / 2;
    }
    function trace(context, gains) {
        context.beginPath();
        for (let at = 0; at < gains.length; ++at)
            context.lineTo(at / (gains.length - 1) * width, place(gains[at]));
    }
    onPaint: {
        const context = getContext("2d");
        context.reset();
        context.strokeStyle = Theme.line;
        context.lineWidth = 1;
        for (const gain of [-12, -6, 0, 6, 12]) {
            context.beginPath();
            context.moveTo(0, Math.round(place(gain)) + 0.5);
            context.lineTo(width, Math.round(place(gain)) + 0.5);
            context.stroke();
        }
        context.font = Theme.small + "px sans-serif";
        context.fillStyle = Theme.secondary;
        for (const gain of [-12, 12])
            context.fillText((gain > 0 ? "+" : "−") + "12 dB", 2, place(gain) + (gain > 0 ? 12 : -4));
        trace(context, heard);
        context.strokeStyle = Theme.secondary;
        context.setLineDash([2, 2]);
        context.lineWidth = 1.5;
        context.stroke();
        context.setLineDash([]);
        trace(context, curve);
        context.strokeStyle = Theme.graph;
        context.lineWidth = 2.5;
        context.stroke();
        context.lineTo(width, place(0));
        context.lineTo(0, place(0));
        context.fillStyle = Qt.alpha(Theme.graph, 0.14);
        context.fill();
    }
}
