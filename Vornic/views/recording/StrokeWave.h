#pragma once

#include <QtQml/qqmlregistration.h>

#include <QColor>
#include <QQuickPaintedItem>
#include <QVariantList>

namespace vornic {

/// Draws the waveform of a stroke: what is cut out in one colour, its release in another, the rest
/// in a third. Places are shares of the width, 0 to 1. Thread: main.
class StrokeWave : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT

    /// Lowest and highest sample of each column, one after the other, -1 to 1; drawn so that the
    /// loudest fills the height.
    Q_PROPERTY(QVariantList wave MEMBER wave_ NOTIFY changed)
    Q_PROPERTY(double cutBegin MEMBER cutBegin_ NOTIFY changed)
    Q_PROPERTY(double cutEnd MEMBER cutEnd_ NOTIFY changed)
    Q_PROPERTY(double releaseBegin MEMBER releaseBegin_ NOTIFY changed)
    Q_PROPERTY(double releaseEnd MEMBER releaseEnd_ NOTIFY changed)
    Q_PROPERTY(QColor cutColour MEMBER cutColour_ NOTIFY changed)
    Q_PROPERTY(QColor releaseColour MEMBER releaseColour_ NOTIFY changed)
    Q_PROPERTY(QColor restColour MEMBER restColour_ NOTIFY changed)

  public:
    explicit StrokeWave(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

  Q_SIGNALS:
    void changed();

  private:
    QVariantList wave_;
    double cutBegin_ = 0.0;
    double cutEnd_ = 0.0;
    double releaseBegin_ = 0.0;
    double releaseEnd_ = 0.0;
    QColor cutColour_;
    QColor releaseColour_;
    QColor restColour_;
};

} // namespace vornic
