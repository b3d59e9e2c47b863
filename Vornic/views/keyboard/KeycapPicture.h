#pragma once

#include <QtQml/qqmlregistration.h>

#include <QColor>
#include <QQuickPaintedItem>

namespace vornic {

/// A board in one keycap: in front of its case, with its return key beside. Thread: main.
class KeycapPicture : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT

    /// The board's colour.
    Q_PROPERTY(QColor colour READ colour WRITE setColour NOTIFY colourChanged)

  public:
    explicit KeycapPicture(QQuickItem* parent = nullptr) : QQuickPaintedItem(parent) {}

    QColor colour() const { return colour_; }
    void setColour(const QColor& colour) {
        if (colour != colour_) {
            colour_ = colour;
            update();
            Q_EMIT colourChanged();
        }
    }

    void paint(QPainter* painter) override;

  Q_SIGNALS:
    void colourChanged();

  private:
    QColor colour_;
};

} // namespace vornic
