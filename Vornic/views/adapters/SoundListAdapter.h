#pragma once

#include "Vornic/views/adapters/RowsModel.h"
#include "Vornic/views/adapters/SoundEdit.h"

#include <QtQml/qqmlregistration.h>

#include <QObject>
#include <QString>

namespace vornic {

/// The sounds of the board: which one is edited, and what there is. Main thread.
class SoundListAdapter : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The program makes it.")

    /// Rows { value, text, colour, keys, current }: `colour` is the place in the row of colours
    /// that tell sounds apart, `keys` says how many keys play the sound.
    Q_PROPERTY(QObject* rows READ rows CONSTANT)
    Q_PROPERTY(QString current READ current WRITE setCurrent NOTIFY changed)
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY changed)
    /// The place of the edited sound in the list, -1 without one.
    Q_PROPERTY(int place READ place NOTIFY changed)
    Q_PROPERTY(bool canRemove READ canRemove NOTIFY changed)
    /// Whether every key plays the edited sound.
    Q_PROPERTY(bool everywhere READ everywhere NOTIFY changed)
    Q_PROPERTY(bool hasRelease READ hasRelease NOTIFY changed)
    Q_PROPERTY(bool editingRelease READ editingRelease WRITE setEditingRelease NOTIFY changed)

  public:
    /// `model` outlives it.
    explicit SoundListAdapter(AppModel& model, QObject* parent = nullptr);

    void refresh();

    QObject* rows() { return &rows_; }
    QString current() const;
    void setCurrent(const QString& id);
    QString name() const;
    void setName(const QString& name);
    int place() const;
    bool canRemove() const;
    bool everywhere() const;
    bool hasRelease() const;
    bool editingRelease() const { return edit_.isRelease(); }
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
    void changed();

  private:
    void insert(SoundSpec sound);
    void select(const std::string& id);

    AppModel& model_;
    SoundEdit edit_;
    RowsModel rows_;
};

} // namespace vornic
