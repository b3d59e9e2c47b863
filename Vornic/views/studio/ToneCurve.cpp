#include "Vornic/views/studio/ToneCurve.h"

#include "Vornic/views/studio/EqualizerAdapter.h"

#include <QFont>
#include <QPainter>
#include <QPolygonF>
#include <algorithm>
#include <array>
#include <cmath>

namespace vornic {

ToneCurve::ToneCurve(QQuickItem* parent) : QQuickPaintedItem(parent) {
    setAntialiasing(true);
    connect(this, &ToneCurve::changed, this, [this] { update(); });
}

double ToneCurve::placeOf(double gain) const {
    return (1.0 - std::clamp(gain, -shown_, shown_) / shown_) * height() / 2;
}

QPolygonF ToneCurve::lineOf(const QList<double>& gains) const {
    QPolygonF line;
    for (qsizetype at = 0; at < gains.size(); ++at) {
        const double share = static_cast<double>(at) / static_cast<double>(gains.size() - 1);
        line.append({share * width(), placeOf(gains.at(at))});
    }
    return line;
}

void ToneCurve::drawFrequencies(QPainter& painter) const {
    struct Mark {
        double hz;
        const char* text;
    };
    constexpr std::array marks{Mark{50, "50"},   Mark{100, "100"},     Mark{200, "200"},
                               Mark{500, "500"}, Mark{1000, "1k"},     Mark{2000, "2k"},
                               Mark{5000, "5k"}, Mark{10000, "10k Hz"}};
    for (const Mark& mark : marks) {
        const double place = std::round(EqualizerAdapter::placeOf(mark.hz) * width()) + 0.5;
        painter.setPen(QPen(gridColour_, 1));
        painter.drawLine(QPointF(place, 0), QPointF(place, height()));
        painter.setPen(heardColour_);
        painter.drawText(QPointF(place + 3, height() - 3), mark.text);
    }
}

void ToneCurve::paint(QPainter* painter) {
    painter->setPen(QPen(gridColour_, 1));
    for (const double gain : {-12.0, -6.0, 0.0, 6.0, 12.0}) {
        const double place = std::round(placeOf(gain)) + 0.5;
        painter->drawLine(QPointF(0, place), QPointF(width(), place));
    }
    QFont font = painter->font();
    font.setPixelSize(textSize_);
    painter->setFont(font);
    painter->setPen(heardColour_);
    painter->drawText(QPointF(2, placeOf(12) + 12), "+12 dB");
    painter->drawText(QPointF(2, placeOf(-12) - 4), "−12 dB");

    drawFrequencies(*painter);

    QPen dashed(heardColour_, 1.5);
    dashed.setDashPattern({2, 2});
    painter->setPen(dashed);
    painter->drawPolyline(lineOf(heard_));

    QPolygonF line = lineOf(curve_);
    if (line.isEmpty()) {
        return;
    }
    painter->setPen(QPen(curveColour_, 2.5));
    painter->drawPolyline(line);
    QColor fill = curveColour_;
    fill.setAlphaF(0.14F);
    line.append({width(), placeOf(0)});
    line.append({0, placeOf(0)});
    painter->setPen(Qt::NoPen);
    painter->setBrush(fill);
    painter->drawPolygon(line);
}

} // namespace vornic
