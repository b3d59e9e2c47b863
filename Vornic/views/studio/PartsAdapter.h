#pragma once

#include "Vornic/views/shared/RowsModel.h"
#include "Vornic/views/studio/SoundEdit.h"
#include "Vornic/views/studio/StudioPart.h"

#include <QtQml/qqmlregistration.h>

#include <QProperty>

namespace vornic {

/// The parts that the edited sound's switch, and the board, are built of. Lists hold rows
/// { text, options, now }, one for each part; `options` are entries { value, text, note }, of which
/// `now` is the chosen one's value. Parts are named by their row. Thread: main.
class PartsAdapter : public StudioPart {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The program makes it.")

    Q_PROPERTY(vornic::RowsModel* switchParts READ switchParts CONSTANT)
    Q_PROPERTY(vornic::RowsModel* buildParts READ buildParts CONSTANT)
    /// Kinds of foam: rows { value, text, note, now }.
    Q_PROPERTY(vornic::RowsModel* foams READ foams CONSTANT)
    /// How much the stabilisers rattle, 0 to 1.
    Q_PROPERTY(double rattle READ rattle WRITE setRattle NOTIFY rattleChanged)
    /// Whether keys are heard on their way up where key and group leave it open.
    Q_PROPERTY(bool releaseByDefault READ releaseByDefault WRITE setReleaseByDefault NOTIFY
                   releaseByDefaultChanged)

  public:
    /// `model` outlives it.
    explicit PartsAdapter(AppModel& model, QObject* parent = nullptr);

    RowsModel* switchParts() { return &switchParts_; }
    RowsModel* buildParts() { return &buildParts_; }
    RowsModel* foams() { return &foams_; }
    double rattle() const { return rattle_; }
    void setRattle(double value);
    bool releaseByDefault() const { return releaseByDefault_; }
    void setReleaseByDefault(bool on);

    /// A row or a value that does not exist changes nothing.
    Q_INVOKABLE void setSwitchPart(int row, int value);
    Q_INVOKABLE void setBuildPart(int row, int value);
    Q_INVOKABLE void setFoam(int foam, bool on);

  Q_SIGNALS:
    void rattleChanged();
    void releaseByDefaultChanged();

  protected:
    void read() override;

  private:
    AppModel& model_;
    SoundEdit edit_;
    RowsModel switchParts_, buildParts_, foams_;
    Q_OBJECT_BINDABLE_PROPERTY(PartsAdapter, double, rattle_, &PartsAdapter::rattleChanged)
    Q_OBJECT_BINDABLE_PROPERTY(PartsAdapter, bool, releaseByDefault_,
                               &PartsAdapter::releaseByDefaultChanged)
};

} // namespace vornic
