#pragma once

#include "Vornic/views/adapters/RowsModel.h"
#include "Vornic/views/adapters/SoundEdit.h"

#include <QtQml/qqmlregistration.h>

#include <QObject>
#include <QString>

namespace vornic {

/// The sliders of the edited sound and of the whole board. All lists hold rows
/// { value, text, unit, from, to, origin, now }. Main thread.
class ShapeAdapter : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The program makes it.")

    /// The edited stroke's chain, besides its tone.
    Q_PROPERTY(QObject* chain READ chain CONSTANT)
    /// The edited sound's character.
    Q_PROPERTY(QObject* character READ character CONSTANT)
    /// The board's character.
    Q_PROPERTY(QObject* boardCharacter READ boardCharacter CONSTANT)
    /// How typing shapes the board's sound.
    Q_PROPERTY(QObject* feel READ feel CONSTANT)

  public:
    /// `model` outlives it.
    explicit ShapeAdapter(AppModel& model, QObject* parent = nullptr);

    void refresh();

    QObject* chain() { return &chain_; }
    QObject* character() { return &character_; }
    QObject* boardCharacter() { return &boardCharacter_; }
    QObject* feel() { return &feel_; }

    Q_INVOKABLE void setChain(const QString& field, double value);
    Q_INVOKABLE void setCharacter(const QString& field, double value);
    Q_INVOKABLE void setBoardCharacter(const QString& field, double value);
    Q_INVOKABLE void setFeel(const QString& field, double value);

  private:
    AppModel& model_;
    SoundEdit edit_;
    RowsModel chain_, character_, boardCharacter_, feel_;
};

} // namespace vornic
