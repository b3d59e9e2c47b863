#pragma once

#include "Vornic/app/AppModel.h"
#include "Vornic/views/studio/StudioPart.h"

#include <QtQml/qqmlregistration.h>

#include <QProperty>
#include <QString>
#include <QVariantList>
#include <cstdint>
#include <functional>

namespace vornic {

/// What the selected keys play, and how: their own values, and what they inherit. Where keys differ
/// it shows the first one's values. Thread: main.
class InspectorAdapter : public StudioPart {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The program makes it.")

    /// A list of { value, text }; the first one, without a value, leaves the sound to what is
    /// inherited and names it.
    Q_PROPERTY(QVariantList sounds READ sounds NOTIFY soundsChanged)
    Q_PROPERTY(QVariantList releases READ releases CONSTANT)
    Q_PROPERTY(bool enabled READ enabled NOTIFY enabledChanged)
    /// Whether the selected keys' own values differ, and in what.
    Q_PROPERTY(bool mixed READ mixed NOTIFY mixedChanged)
    Q_PROPERTY(Values several READ several NOTIFY severalChanged)
    Q_PROPERTY(QString sound READ sound WRITE setSound NOTIFY soundChanged)
    Q_PROPERTY(double gainDb READ gainDb WRITE setGainDb NOTIFY gainDbChanged)
    Q_PROPERTY(double pitch READ pitch WRITE setPitch NOTIFY pitchChanged)
    /// Where the selection has none of its own: what it inherits, or a single key's own place.
    Q_PROPERTY(double pan READ pan WRITE setPan NOTIFY panChanged)
    Q_PROPERTY(bool ownPan READ ownPan NOTIFY ownPanChanged)
    Q_PROPERTY(int release READ release WRITE setRelease NOTIFY releaseChanged)
    /// What is inherited, in words; nothing where there is nothing to say.
    Q_PROPERTY(QString gainNote READ gainNote NOTIFY gainNoteChanged)
    Q_PROPERTY(QString pitchNote READ pitchNote NOTIFY pitchNoteChanged)
    Q_PROPERTY(QString panNote READ panNote NOTIFY panNoteChanged)
    Q_PROPERTY(QString releaseNote READ releaseNote NOTIFY releaseNoteChanged)
    /// Whether a selected key overrides its group.
    Q_PROPERTY(bool canReset READ canReset NOTIFY canResetChanged)

  public:
    /// What a key has of its own.
    enum Value : std::uint8_t { Sound = 1, Gain = 2, Release = 4, Pitch = 8, Pan = 16 };
    Q_DECLARE_FLAGS(Values, Value)
    Q_FLAG(Values)

    /// `model` outlives it.
    explicit InspectorAdapter(AppModel& model, QObject* parent = nullptr)
        : StudioPart(parent), model_(model) {}

    QVariantList sounds() const { return sounds_; }
    static QVariantList releases();
    bool enabled() const { return enabled_; }
    bool mixed() const { return mixed_; }
    Values several() const { return several_; }
    QString sound() const { return sound_; }
    void setSound(const QString& id);
    double gainDb() const { return gainDb_; }
    void setGainDb(double value);
    double pitch() const { return pitch_; }
    void setPitch(double value);
    double pan() const { return pan_; }
    void setPan(double value);
    bool ownPan() const { return ownPan_; }
    int release() const { return release_; }
    void setRelease(int mode);
    QString gainNote() const { return gainNote_; }
    QString pitchNote() const { return pitchNote_; }
    QString panNote() const { return panNote_; }
    QString releaseNote() const { return releaseNote_; }
    bool canReset() const { return canReset_; }

    /// Gives the selected keys back to their groups.
    Q_INVOKABLE void reset();
    /// Leaves the pan to what is inherited.
    Q_INVOKABLE void resetPan();

  Q_SIGNALS:
    void soundsChanged();
    void enabledChanged();
    void mixedChanged();
    void severalChanged();
    void soundChanged();
    void gainDbChanged();
    void pitchChanged();
    void panChanged();
    void ownPanChanged();
    void releaseChanged();
    void gainNoteChanged();
    void pitchNoteChanged();
    void panNoteChanged();
    void releaseNoteChanged();
    void canResetChanged();

  protected:
    void read() override;

  private:
    void change(const std::function<void(Assignment&)>& what);

    AppModel& model_;
    Q_OBJECT_BINDABLE_PROPERTY(InspectorAdapter, QVariantList, sounds_,
                               &InspectorAdapter::soundsChanged)
    Q_OBJECT_BINDABLE_PROPERTY(InspectorAdapter, bool, enabled_, &InspectorAdapter::enabledChanged)
    Q_OBJECT_BINDABLE_PROPERTY(InspectorAdapter, bool, mixed_, &InspectorAdapter::mixedChanged)
    Q_OBJECT_BINDABLE_PROPERTY(InspectorAdapter, Values, several_,
                               &InspectorAdapter::severalChanged)
    Q_OBJECT_BINDABLE_PROPERTY(InspectorAdapter, QString, sound_, &InspectorAdapter::soundChanged)
    Q_OBJECT_BINDABLE_PROPERTY(InspectorAdapter, double, gainDb_, &InspectorAdapter::gainDbChanged)
    Q_OBJECT_BINDABLE_PROPERTY(InspectorAdapter, double, pitch_, &InspectorAdapter::pitchChanged)
    Q_OBJECT_BINDABLE_PROPERTY(InspectorAdapter, double, pan_, &InspectorAdapter::panChanged)
    Q_OBJECT_BINDABLE_PROPERTY(InspectorAdapter, bool, ownPan_, &InspectorAdapter::ownPanChanged)
    Q_OBJECT_BINDABLE_PROPERTY(InspectorAdapter, int, release_, &InspectorAdapter::releaseChanged)
    Q_OBJECT_BINDABLE_PROPERTY(InspectorAdapter, QString, gainNote_,
                               &InspectorAdapter::gainNoteChanged)
    Q_OBJECT_BINDABLE_PROPERTY(InspectorAdapter, QString, pitchNote_,
                               &InspectorAdapter::pitchNoteChanged)
    Q_OBJECT_BINDABLE_PROPERTY(InspectorAdapter, QString, panNote_,
                               &InspectorAdapter::panNoteChanged)
    Q_OBJECT_BINDABLE_PROPERTY(InspectorAdapter, QString, releaseNote_,
                               &InspectorAdapter::releaseNoteChanged)
    Q_OBJECT_BINDABLE_PROPERTY(InspectorAdapter, bool, canReset_,
                               &InspectorAdapter::canResetChanged)
};

} // namespace vornic
