#pragma once

#include "Vornic/views/adapters/RowsModel.h"
#include "Vornic/views/adapters/SoundEdit.h"

#include <QtQml/qqmlregistration.h>

#include <QObject>
#include <QString>

namespace vornic {

/// The parts that the edited sound's switch, and the board, are built of. Lists hold rows
/// { value, text, options, now }, one for each part; `options` is a list of { value, text, note }.
/// Main thread.
class PartsAdapter : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The program makes it.")

    Q_PROPERTY(QObject* switchParts READ switchParts CONSTANT)
    Q_PROPERTY(QObject* buildParts READ buildParts CONSTANT)
    /// Kinds of foam: rows { value, text, note, now }.
    Q_PROPERTY(QObject* foams READ foams CONSTANT)
    /// How much the stabilisers rattle, 0 to 1.
    Q_PROPERTY(double rattle READ rattle WRITE setRattle NOTIFY changed)
    /// Whether keys are heard on their way up where key and group leave it open.
    Q_PROPERTY(bool releaseByDefault READ releaseByDefault WRITE setReleaseByDefault NOTIFY changed)

  public:
    /// `model` outlives it.
    explicit PartsAdapter(AppModel& model, QObject* parent = nullptr);

    void refresh();

    QObject* switchParts() { return &switchParts_; }
    QObject* buildParts() { return &buildParts_; }
    QObject* foams() { return &foams_; }
    double rattle() const;
    void setRattle(double value);
    bool releaseByDefault() const;
    void setReleaseByDefault(bool on);

    Q_INVOKABLE void setSwitchPart(const QString& part, const QString& value);
    Q_INVOKABLE void setBuildPart(const QString& part, const QString& value);
    Q_INVOKABLE void setFoam(const QString& foam, bool on);

  Q_SIGNALS:
    void changed();

  private:
    AppModel& model_;
    SoundEdit edit_;
    RowsModel switchParts_, buildParts_, foams_;
};

} // namespace vornic
