#pragma once

#include "Vornic/model/AppModel.h"

#include <QtQml/qqmlregistration.h>

#include <QObject>
#include <QString>
#include <QVariantList>
#include <functional>

namespace vornic {

/// The Studio's sounds: the chain, parts and character of the sound that is edited, and of the
/// board. Main thread.
class StudioSoundsAdapter : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The program makes it.")

    /// Lists of { value, text }.
    Q_PROPERTY(QVariantList sounds READ sounds NOTIFY changed)
    Q_PROPERTY(QVariantList presets READ presets CONSTANT)
    Q_PROPERTY(QString sound READ sound WRITE setSound NOTIFY changed)
    Q_PROPERTY(QString soundName READ soundName WRITE setSoundName NOTIFY changed)
    Q_PROPERTY(bool hasRelease READ hasRelease NOTIFY changed)
    Q_PROPERTY(bool editingRelease READ editingRelease WRITE setEditingRelease NOTIFY changed)
    Q_PROPERTY(QString preset READ preset NOTIFY changed)

    /// The equaliser: a list of { value, text, hint, hz, gain }, gains in dB.
    Q_PROPERTY(QVariantList bands READ bands NOTIFY changed)
    /// Sliders: lists of { value, text, unit, from, to, origin, now }.
    Q_PROPERTY(QVariantList chain READ chain NOTIFY changed)
    Q_PROPERTY(QVariantList character READ character NOTIFY changed)
    /// Choices: lists of { value, text, options, now }.
    Q_PROPERTY(QVariantList switchParts READ switchParts NOTIFY changed)
    Q_PROPERTY(QVariantList buildParts READ buildParts NOTIFY changed)
    /// Kinds of foam: a list of { value, text, now }.
    Q_PROPERTY(QVariantList foams READ foams NOTIFY changed)
    /// The edited stroke as it sounds, -1 to 1: highest magnitudes of equal pieces of time.
    Q_PROPERTY(QVariantList wave READ wave NOTIFY changed)
    /// How long the wave lasts, in milliseconds.
    Q_PROPERTY(double waveMillis READ waveMillis NOTIFY changed)

  public:
    /// `model` outlives it.
    explicit StudioSoundsAdapter(AppModel& model, QObject* parent = nullptr);

    void refresh() { Q_EMIT changed(); }

    QVariantList sounds() const;
    static QVariantList presets();
    QString sound() const;
    void setSound(const QString& id);
    QString soundName() const;
    void setSoundName(const QString& name);
    bool hasRelease() const;
    bool editingRelease() const;
    void setEditingRelease(bool on);
    QString preset() const;
    QVariantList bands() const;
    QVariantList chain() const;
    QVariantList character() const;
    QVariantList switchParts() const;
    QVariantList buildParts() const;
    QVariantList foams() const;
    QVariantList wave() const;
    double waveMillis() const;

    Q_INVOKABLE void setBand(const QString& band, double gain);
    Q_INVOKABLE void setChain(const QString& field, double value);
    Q_INVOKABLE void setCharacter(const QString& field, double value);
    Q_INVOKABLE void setSwitchPart(const QString& part, const QString& value);
    Q_INVOKABLE void setBuildPart(const QString& part, const QString& value);
    Q_INVOKABLE void setFoam(const QString& foam, bool on);
    Q_INVOKABLE void applyPreset(const QString& id);
    /// Plays the edited stroke once.
    Q_INVOKABLE void audition();

  Q_SIGNALS:
    void changed();

  private:
    const SoundSpec* edited() const;
    const StrokeSpec* stroke() const;
    void changeSound(const std::function<void(SoundSpec&)>& what);
    void changeStroke(const std::function<void(StrokeSpec&)>& what);

    AppModel& model_;
};

} // namespace vornic
