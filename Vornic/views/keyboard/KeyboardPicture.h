#pragma once

#include "Vornic/views/keyboard/LitKey.h"
#include "Vornic/views/keyboard/LiveKeyboard.h"

#include <QtQml/qqmlregistration.h>

#include <QAbstractAnimation>
#include <QColor>
#include <QList>
#include <QPointer>
#include <QQuickPaintedItem>
#include <array>
#include <vector>

namespace vornic {

/// A keyboard, drawn: caps go down with their keys and glow in the colours of their sounds. What
/// does not move is drawn once. Thread: main.
class KeyboardPicture : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(vornic::LiveKeyboard* source READ source WRITE setSource NOTIFY sourceChanged)
    /// Whether caps have the colours of their sounds, with a letter for each, instead of the
    /// board's.
    Q_PROPERTY(bool tinted READ tinted WRITE setTinted NOTIFY tintedChanged)
    /// The codes of the keys that are outlined.
    Q_PROPERTY(QList<int> selected READ selected WRITE setSelected NOTIFY selectedChanged)
    /// The colours of sounds, in turn.
    Q_PROPERTY(QList<QColor> colours READ colours WRITE setColours NOTIFY coloursChanged)
    /// Whether keys go down and light up without any motion.
    Q_PROPERTY(bool still READ still WRITE setStill NOTIFY stillChanged)
    /// The length of a key unit in pixels, and where the first key begins.
    Q_PROPERTY(double unit READ unit NOTIFY unitChanged)
    Q_PROPERTY(double bezel READ bezel NOTIFY unitChanged)

  public:
    explicit KeyboardPicture(QQuickItem* parent = nullptr);

    LiveKeyboard* source() const { return source_; }
    void setSource(LiveKeyboard* source);
    bool tinted() const { return tinted_; }
    void setTinted(bool tinted);
    QList<int> selected() const { return selected_; }
    void setSelected(const QList<int>& selected);
    QList<QColor> colours() const { return colours_; }
    void setColours(const QList<QColor>& colours);
    bool still() const { return still_; }
    void setStill(bool still);
    double unit() const { return unit_; }
    double bezel() const { return unit_ * CapPainter::bezel; }

    /// How high the picture is that is so wide.
    Q_INVOKABLE double heightFor(double width) const;
    /// The key that is drawn at a place in pixels, -1 where there is none.
    Q_INVOKABLE int keyAt(double x, double y) const;
    /// Whether anything moves or glows, and so takes frames.
    bool moving() const { return clock_.state() == QAbstractAnimation::Running; }

    void paint(QPainter* painter) override;

  Q_SIGNALS:
    void sourceChanged();
    void tintedChanged();
    void selectedChanged();
    void coloursChanged();
    void stillChanged();
    void unitChanged();

  protected:
    void geometryChange(const QRectF& now, const QRectF& before) override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;

  private:
    /// Ticks with every frame while it runs.
    class Clock : public QAbstractAnimation {
      public:
        explicit Clock(KeyboardPicture& picture) : picture_(picture) {}
        int duration() const override { return -1; }

      protected:
        void updateCurrentTime(int millis) override;

      private:
        KeyboardPicture& picture_;
        int last_ = 0;
    };

    void follow();
    void measure();
    void redraw();
    void strike(int code, bool down, double loudness, double pan);
    void showInSpace(const QColor& colour, double loudness, double pan);
    void advance(double millis);
    void rest();
    LitKey* lit(int code) const;
    LitKey* unused();
    QRectF placeOf(const DrawnCap& cap) const;
    QColor colourOf(int sound) const;
    CapPainter::Look lookOf(const DrawnCap& cap) const;

    QPointer<LiveKeyboard> source_;
    bool tinted_ = false;
    QList<int> selected_;
    QList<QColor> colours_;
    bool still_ = false;
    double unit_ = 1.0;
    std::vector<LitKey*> lit_; // children
    /// Left ear, right ear, and the place between them.
    std::array<EarLight*, 3> ears_{};
    Clock clock_{*this};
};

} // namespace vornic
