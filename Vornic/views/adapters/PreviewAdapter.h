#pragma once

#include "Vornic/app/AppModel.h"

#include <QtQml/qqmlregistration.h>

#include <QColor>
#include <QObject>
#include <QString>
#include <QVariantList>
#include <cstddef>

namespace vornic {

/// A board file that is looked at before it is taken in. Main thread.
class PreviewAdapter : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The program makes it.")

    /// Whether there is one; without it the rest is empty.
    Q_PROPERTY(bool open READ open NOTIFY changed)
    Q_PROPERTY(QString name READ name NOTIFY changed)
    Q_PROPERTY(QString detail READ detail NOTIFY changed)
    Q_PROPERTY(QColor colour READ colour NOTIFY changed)
    Q_PROPERTY(QString credits READ credits NOTIFY changed)
    /// "3 sounds, 12 recordings of its own".
    Q_PROPERTY(QString contents READ contents NOTIFY changed)
    /// The keys of its keyboard, as drawnKey makes them, and its size in key units.
    Q_PROPERTY(QVariantList keys READ keys NOTIFY changed)
    Q_PROPERTY(double layoutWidth READ layoutWidth NOTIFY changed)
    Q_PROPERTY(double layoutHeight READ layoutHeight NOTIFY changed)

  public:
    /// `model` outlives it.
    explicit PreviewAdapter(AppModel& model, QObject* parent = nullptr);

    /// Tells the view when another board is looked at, or none any more.
    void refresh();

    bool open() const { return board() != nullptr; }
    QString name() const;
    QString detail() const;
    QColor colour() const;
    QString credits() const;
    QString contents() const;
    QVariantList keys() const;
    double layoutWidth() const;
    double layoutHeight() const;

    Q_INVOKABLE void play();
    /// Makes the board one of the user's; what fails is told by the model.
    Q_INVOKABLE void keep() { model_.keepPreview(); }
    Q_INVOKABLE void drop() { model_.dropPreview(); }

  Q_SIGNALS:
    void changed();

  private:
    const Board* board() const { return model_.preview(); }

    AppModel& model_;
    std::size_t shown_ = 0;
};

} // namespace vornic
