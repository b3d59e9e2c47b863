#pragma once

#include "Vornic/app/AppModel.h"
#include "Vornic/views/shared/RowsModel.h"
#include "Vornic/views/studio/StudioPart.h"

#include <QtQml/qqmlregistration.h>

#include <QProperty>

namespace vornic {

/// The edited stroke as it was last rendered, to see and to hear. Thread: main.
class StrokeAdapter : public StudioPart {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The program makes it.")

    /// Rows { value, text, strips, millis }: the stroke at each velocity, or, for a release, which
    /// has but one, in one row. `strips` are the highest magnitudes of equal pieces of the time of
    /// the longest of them, 0 to 1; `millis` is how long the stroke lasts.
    Q_PROPERTY(vornic::RowsModel* rows READ rows CONSTANT)
    /// Whether what is heard and drawn is not yet what was edited.
    Q_PROPERTY(bool rendering READ rendering NOTIFY renderingChanged)

  public:
    /// `model` outlives it.
    explicit StrokeAdapter(AppModel& model, QObject* parent = nullptr)
        : StudioPart(parent), model_(model) {}

    void refreshRendering();

    RowsModel* rows() { return &rows_; }
    bool rendering() const { return rendering_; }

    /// Plays the edited stroke once, as struck with that velocity.
    Q_INVOKABLE void play(int velocity = 1);

  Q_SIGNALS:
    void renderingChanged();

  protected:
    void read() override;

  private:
    AppModel& model_;
    RowsModel rows_;
    Q_OBJECT_BINDABLE_PROPERTY(StrokeAdapter, bool, rendering_, &StrokeAdapter::renderingChanged)
};

} // namespace vornic
