#pragma once

#include "Vornic/views/shared/RowsModel.h"
#include "Vornic/views/studio/SoundEdit.h"
#include "Vornic/views/studio/StudioPart.h"

#include <QtQml/qqmlregistration.h>

#include <QProperty>
#include <QString>
#include <QStringList>
#include <QVariantList>
#include <cstdint>
#include <functional>

namespace vornic {

/// The layers of the edited stroke. Layers are named by their place in the list. Thread: main.
class LayersAdapter : public StudioPart {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The program makes it.")

    /// Rows { part, summary, samples, offset, gain, pitch, invert, mute, solo, heard }: `offset` in
    /// ms, `gain` in dB, `pitch` in semitones; `heard` is false for a layer that mute or another
    /// one's solo leaves out.
    Q_PROPERTY(vornic::RowsModel* rows READ rows CONSTANT)
    /// The same as a list, for whoever wants one row.
    Q_PROPERTY(QVariantList list READ list NOTIFY listChanged)
    /// Entries { value, text }.
    Q_PROPERTY(QVariantList parts READ parts CONSTANT)
    /// Whether the layers' attacks coincide, before their own offsets.
    Q_PROPERTY(bool aligned READ aligned WRITE setAligned NOTIFY alignedChanged)
    Q_PROPERTY(bool canAdd READ canAdd NOTIFY canAddChanged)

  public:
    /// `model` outlives it.
    explicit LayersAdapter(AppModel& model, QObject* parent = nullptr);

    /// What of a layer is a number, and what goes on and off.
    enum class Number : std::uint8_t { Offset, Gain, Pitch };
    Q_ENUM(Number)
    enum class Flag : std::uint8_t { Invert, Mute, Solo };
    Q_ENUM(Flag)

    RowsModel* rows() { return &rows_; }
    QVariantList list() const { return list_; }
    static QVariantList parts();
    bool aligned() const { return aligned_; }
    void setAligned(bool on);
    bool canAdd() const { return canAdd_; }

    /// A new layer behind the others, with the recordings of the last one.
    Q_INVOKABLE void add();
    Q_INVOKABLE void remove(int place);
    /// Moves a layer to another place; nothing happens beyond the ends.
    Q_INVOKABLE void move(int place, int to);
    Q_INVOKABLE void setPart(int place, int part);
    Q_INVOKABLE void setNumber(int place, vornic::LayersAdapter::Number which, double value);
    Q_INVOKABLE void setFlag(int place, vornic::LayersAdapter::Flag which, bool on);

    /// What there is to choose from, in sets: a list of { text, ids, names }.
    Q_INVOKABLE QVariantList recordings() const;
    /// Adds recordings to a layer, or takes them from it.
    Q_INVOKABLE void choose(int place, const QStringList& ids, bool on);
    /// Plays one recording as it is in the library.
    Q_INVOKABLE void play(const QString& id);

  Q_SIGNALS:
    void listChanged();
    void alignedChanged();
    void canAddChanged();

  protected:
    void read() override;

  private:
    void changeLayer(int place, const std::function<void(LayerSpec&)>& what);

    AppModel& model_;
    SoundEdit edit_;
    RowsModel rows_;
    Q_OBJECT_BINDABLE_PROPERTY(LayersAdapter, QVariantList, list_, &LayersAdapter::listChanged)
    Q_OBJECT_BINDABLE_PROPERTY(LayersAdapter, bool, aligned_, &LayersAdapter::alignedChanged)
    Q_OBJECT_BINDABLE_PROPERTY(LayersAdapter, bool, canAdd_, &LayersAdapter::canAddChanged)
};

} // namespace vornic
