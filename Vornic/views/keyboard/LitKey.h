#pragma once

#include "Vornic/views/keyboard/CapPainter.h"

#include <QQuickPaintedItem>
#include <QString>

namespace vornic {

/// A key that is down or glows, drawn over the picture of its keyboard: so only that place is drawn
/// anew. Thread: main.
class LitKey : public QQuickPaintedItem {
  public:
    explicit LitKey(QQuickItem* parent);

    /// Shows `cap` at `place` (pixels of the parent) until `rest`.
    void show(const DrawnCap& cap, const QRectF& place, double unit, const Palette& palette,
              const CapPainter::Look& look);
    /// The key went down, `loudness` (0 to 1) loud, or up. `still`: at once, without any motion.
    void press(double loudness, bool still);
    void release(bool still);
    /// So many milliseconds later. Whether anything still moves or glows.
    bool advance(double millis);
    /// Shows nothing, and forgets which key it was.
    void rest();

    /// The key that is shown, -1 at rest.
    int code() const { return cap_.code; }
    bool pressed() const { return pressed_; }
    double depth() const { return look_.down; }
    double glow() const { return look_.glow; }

    void paint(QPainter* painter) override;

  private:
    DrawnCap cap_;
    QRectF cell_; // within this item
    double unit_ = 1.0;
    QColor well_;
    CapPainter::Look look_;
    bool pressed_ = false;
    double brightest_ = 0.0;
    double glowed_ = 0.0; // milliseconds since it lit up
};

/// A light that shows from where keys are heard. Thread: main.
class EarLight : public QQuickPaintedItem {
  public:
    explicit EarLight(QQuickItem* parent) : QQuickPaintedItem(parent) { setVisible(false); }

    /// Lights up to `level` (0 to 1), unless it is brighter already.
    void light(QColor colour, double level);
    /// So many milliseconds later. Whether it still glows.
    bool advance(double millis);

    void paint(QPainter* painter) override;

  private:
    QColor colour_;
    double level_ = 0.0;
};

} // namespace vornic
