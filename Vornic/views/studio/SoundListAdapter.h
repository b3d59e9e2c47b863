#pragma once

#include "Vornic/views/shared/RowsModel.h"
#include "Vornic/views/studio/SoundEdit.h"
#include "Vornic/views/studio/StudioPart.h"

#include <QtQml/qqmlregistration.h>

#include <QProperty>
#include <QString>
#include <string>

namespace vornic {

/// The sounds of the board: which one is edited, and what there is. Thread: main.
class SoundListAdapter : public StudioPart {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The program makes it.")

    /// Rows { value, text, colour, keys, current }: `colour` is the place in the row of colours
    /// that tell sounds apart, `keys` says how many keys play the sound.
    Q_PROPERTY(vornic::RowsModel* rows READ rows CONSTANT)
    Q_PROPERTY(QString current READ current WRITE setCurrent NOTIFY currentChanged)
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY nameChanged)
    /// The place of the edited sound in the list, -1 without one.
    Q_PROPERTY(int place READ place NOTIFY placeChanged)
    Q_PROPERTY(bool canRemove READ canRemove NOTIFY canRemoveChanged)
    /// Whether every key plays the edited sound.
    Q_PROPERTY(bool everywhere READ everywhere NOTIFY everywhereChanged)
    Q_PROPERTY(bool hasRelease READ hasRelease NOTIFY hasReleaseChanged)
    Q_PROPERTY(bool editingRelease READ editingRelease WRITE setEditingRelease NOTIFY
                   editingReleaseChanged)

  public:
    /// `model` outlives it.
    explicit SoundListAdapter(AppModel& model, QObject* parent = nullptr);

    RowsModel* rows() { return &rows_; }
    QString current() const { return current_; }
    void setCurrent(const QString& id);
    QString name() const { return name_; }
    void setName(const QString& name);
    int place() const { return place_; }
    bool canRemove() const { return canRemove_; }
    bool everywhere() const { return everywhere_; }
    bool hasRelease() const { return hasRelease_; }
    bool editingRelease() const { return editingRelease_; }
    void setEditingRelease(bool on);

    /// A sound with the recordings of the edited one, in one layer, and nothing that shapes them.
    Q_INVOKABLE void add();
    /// A copy of the edited sound.
    Q_INVOKABLE void duplicate();
    /// Takes the edited sound away, unless it is the last one. Its keys play what their group, or
    /// else the board, says.
    Q_INVOKABLE void remove();
    /// Makes every key play the edited sound.
    Q_INVOKABLE void useForAllKeys();
    /// Gives the edited sound a release, from the same recordings, or takes it away.
    Q_INVOKABLE void setHasRelease(bool on);

  Q_SIGNALS:
    void currentChanged();
    void nameChanged();
    void placeChanged();
    void canRemoveChanged();
    void everywhereChanged();
    void hasReleaseChanged();
    void editingReleaseChanged();

  protected:
    void read() override;

  private:
    void insert(SoundSpec sound);
    void select(const std::string& id);

    AppModel& model_;
    SoundEdit edit_;
    RowsModel rows_;
    Q_OBJECT_BINDABLE_PROPERTY(SoundListAdapter, QString, current_,
                               &SoundListAdapter::currentChanged)
    Q_OBJECT_BINDABLE_PROPERTY(SoundListAdapter, QString, name_, &SoundListAdapter::nameChanged)
    Q_OBJECT_BINDABLE_PROPERTY(SoundListAdapter, bool, canRemove_,
                               &SoundListAdapter::canRemoveChanged)
    Q_OBJECT_BINDABLE_PROPERTY(SoundListAdapter, bool, everywhere_,
                               &SoundListAdapter::everywhereChanged)
    Q_OBJECT_BINDABLE_PROPERTY(SoundListAdapter, bool, hasRelease_,
                               &SoundListAdapter::hasReleaseChanged)
    Q_OBJECT_BINDABLE_PROPERTY(SoundListAdapter, bool, editingRelease_,
                               &SoundListAdapter::editingReleaseChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(SoundListAdapter, int, place_, -1,
                                         &SoundListAdapter::placeChanged)
};

} // namespace vornic
