#pragma once

#include <QtQml/qqmlregistration.h>

#include <QColor>
#include <QList>
#include <QQuickPaintedItem>

namespace vornic {

/// Draws the gain of the tone control over frequency, and what is heard with everything else, over
/// a grid of decibels. Thread: main.
class ToneCurve : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT

    /// Gains in dB, at equal steps along the width.
    Q_PROPERTY(QList<double> curve MEMBER curve_ NOTIFY changed)
    Q_PROPERTY(QList<double> heard MEMBER heard_ NOTIFY changed)
    /// How many dB the height shows, above and below the middle.
    Q_PROPERTY(double shown MEMBER shown_ NOTIFY changed)
    Q_PROPERTY(QColor curveColour MEMBER curveColour_ NOTIFY changed)
    Q_PROPERTY(QColor heardColour MEMBER heardColour_ NOTIFY changed)
    Q_PROPERTY(QColor gridColour MEMBER gridColour_ NOTIFY changed)
    /// Of the grid's figures, in pixels.
    Q_PROPERTY(int textSize MEMBER textSize_ NOTIFY changed)

  public:
    explicit ToneCurve(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

  Q_SIGNALS:
    void changed();

  private:
    void drawFrequencies(QPainter& painter) const;
    double placeOf(double gain) const;
    QPolygonF lineOf(const QList<double>& gains) const;

    QList<double> curve_, heard_;
    double shown_ = 15.0;
    QColor curveColour_, heardColour_, gridColour_;
    int textSize_ = 12;
};

} // namespace vornic
