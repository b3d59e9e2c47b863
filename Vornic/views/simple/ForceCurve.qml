// How hard a key pushes back on its way down, from left to right.
import QtQuick
import Vornic

Canvas {
    id: curve

    required property int feel
    property color ink: Theme.text

    implicitHeight: 28
    onInkChanged: requestPaint()
    onWidthChanged: requestPaint()
    Accessible.ignored: true
    onPaint: {
        const draw = getContext("2d");
        draw.reset();
        draw.strokeStyle = ink;
        draw.lineWidth = 2;
        draw.lineJoin = "round";
        draw.lineCap = "round";
        const x = share => 3 + share * (width - 6), y = force => height - 4 - force * (height - 8);
        draw.beginPath();
        draw.moveTo(x(0), y(0.15));
        if (feel === 0) {
            draw.lineTo(x(1), y(0.9));
        } else if (feel === 1) {
            draw.bezierCurveTo(x(0.18), y(0.35), x(0.22), y(0.85), x(0.36), y(0.85));
            draw.bezierCurveTo(x(0.5), y(0.85), x(0.5), y(0.4), x(0.64), y(0.4));
            draw.bezierCurveTo(x(0.78), y(0.4), x(0.88), y(0.7), x(1), y(0.95));
        } else {
            draw.lineTo(x(0.4), y(0.95));
            draw.lineTo(x(0.44), y(0.3));
            draw.lineTo(x(0.7), y(0.4));
            draw.lineTo(x(1), y(0.9));
        }
        draw.stroke();
    }
}
