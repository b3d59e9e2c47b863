#pragma once

#include "Vornic/views/adapters/RowsModel.h"
#include "Vornic/views/adapters/SoundEdit.h"

#include <QtQml/qqmlregistration.h>

#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantList>
#include <functional>

namespace vornic {

/// The layers of the edited stroke. Layers are named by their place in the list. Main thread.
class LayersAdapter : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The program makes it.")

    /// Rows { part, summary, samples, offset, gain, pitch, invert, mute, solo, heard }: `offset` in
    /// ms, `gain` in dB, `pitch` in semitones; `heard` is false for a layer that mute or another
    /// one's solo leaves out.
    Q_PROPERTY(QObject* rows READ rows CONSTANT)
    /// The same as a list, for whoever wants one row.
    Q_PROPERTY(QVariantList list READ list NOTIFY changed)
    /// Lists of { value, text }.
    Q_PROPERTY(QVariantList parts READ parts CONSTANT)
    /// Whether the layers' attacks coincide, before their own offsets.
    Q_PROPERTY(bool aligned READ aligned WRITE setAligned NOTIFY changed)
    Q_PROPERTY(bool canAdd READ canAdd NOTIFY changed)

  public:
    /// `model` outlives it.
    explicit LayersAdapter(AppModel& model, QObject* parent = nullptr);

    void refresh();

    QObject* rows() { return &rows_; }
    QVariantList list() const { return rows_.rows(); }
    static QVariantList parts();
    bool aligned() const;
    void setAligned(bool on);
    bool canAdd() const;

    /// A new layer behind the others, with the recordings of the last one.
    Q_INVOKABLE void add();
    Q_INVOKABLE void remove(int place);
    /// Moves a layer to another place; nothing happens beyond the ends.
    Q_INVOKABLE void move(int place, int to);
    Q_INVOKABLE void setPart(int place, const QString& part);
    /// `field` is "offset", "gain" or "pitch".
    Q_INVOKABLE void setNumber(int place, const QString& field, double value);
    /// `field` is "invert", "mute" or "solo".
    Q_INVOKABLE void setFlag(int place, const QString& field, bool on);

    /// What there is to choose from, in sets: a list of { text, ids, names }.
    Q_INVOKABLE QVariantList recordings() const;
    /// Adds recordings to a layer, or takes them from it.
    Q_INVOKABLE void choose(int place, const QStringList& ids, bool on);
    /// Plays one recording as it is in the library.
    Q_INVOKABLE void play(const QString& id);

  Q_SIGNALS:
    void changed();

  private:
    void changeLayer(int place, const std::function<void(LayerSpec&)>& what);

    AppModel& model_;
    SoundEdit edit_;
    RowsModel rows_;
};

} // namespace vornic
