#pragma once

#include "Vornic/views/shared/RowsModel.h"
#include "Vornic/views/studio/SoundEdit.h"
#include "Vornic/views/studio/StudioPart.h"

#include <QtQml/qqmlregistration.h>

namespace vornic {

/// The sliders of the edited sound and of the whole board. All lists hold rows
/// { text, unit, from, to, origin, now } and are turned by their row. Thread: main.
class ShapeAdapter : public StudioPart {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The program makes it.")

    /// The edited stroke's chain, besides its tone.
    Q_PROPERTY(vornic::RowsModel* chain READ chain CONSTANT)
    /// The edited sound's character.
    Q_PROPERTY(vornic::RowsModel* character READ character CONSTANT)
    /// The board's character.
    Q_PROPERTY(vornic::RowsModel* boardCharacter READ boardCharacter CONSTANT)
    /// How typing shapes the board's sound.
    Q_PROPERTY(vornic::RowsModel* feel READ feel CONSTANT)

  public:
    /// `model` outlives it.
    explicit ShapeAdapter(AppModel& model, QObject* parent = nullptr);

    RowsModel* chain() { return &chain_; }
    RowsModel* character() { return &character_; }
    RowsModel* boardCharacter() { return &boardCharacter_; }
    RowsModel* feel() { return &feel_; }

    Q_INVOKABLE void setChain(int row, double value);
    Q_INVOKABLE void setCharacter(int row, double value);
    Q_INVOKABLE void setBoardCharacter(int row, double value);
    Q_INVOKABLE void setFeel(int row, double value);

  protected:
    void read() override;

  private:
    AppModel& model_;
    SoundEdit edit_;
    RowsModel chain_, character_, boardCharacter_, feel_;
};

} // namespace vornic
