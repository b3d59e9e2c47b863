#pragma once

#include "Vornic/app/AppModel.h"

#include <QtQml/qqmlregistration.h>

#include <QObject>
#include <QString>
#include <QVariantList>
#include <functional>
#include <vector>

namespace vornic {

/// What the selected keys play, and how: their own values, and what they inherit. Where keys differ
/// it shows the first one's values. Main thread.
class InspectorAdapter : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The program makes it.")

    /// A list of { value, text }; the first one, without a value, leaves the sound to what is
    /// inherited and names it.
    Q_PROPERTY(QVariantList sounds READ sounds NOTIFY changed)
    Q_PROPERTY(QVariantList releases READ releases CONSTANT)
    Q_PROPERTY(bool enabled READ enabled NOTIFY changed)
    /// Whether the selected keys' own values differ.
    Q_PROPERTY(bool mixed READ mixed NOTIFY changed)
    Q_PROPERTY(QString sound READ sound WRITE setSound NOTIFY changed)
    Q_PROPERTY(double gainDb READ gainDb WRITE setGainDb NOTIFY changed)
    Q_PROPERTY(double pitch READ pitch WRITE setPitch NOTIFY changed)
    /// Where the selection has none of its own: what it inherits, or a single key's own place.
    Q_PROPERTY(double pan READ pan WRITE setPan NOTIFY changed)
    Q_PROPERTY(bool ownPan READ ownPan NOTIFY changed)
    Q_PROPERTY(QString release READ release WRITE setRelease NOTIFY changed)
    /// What is inherited, in words; nothing where there is nothing to say.
    Q_PROPERTY(QString gainNote READ gainNote NOTIFY changed)
    Q_PROPERTY(QString pitchNote READ pitchNote NOTIFY changed)
    Q_PROPERTY(QString panNote READ panNote NOTIFY changed)
    Q_PROPERTY(QString releaseNote READ releaseNote NOTIFY changed)
    /// Whether a selected key overrides its group.
    Q_PROPERTY(bool canReset READ canReset NOTIFY changed)

  public:
    /// `model` outlives it.
    explicit InspectorAdapter(AppModel& model, QObject* parent = nullptr)
        : QObject(parent), model_(model) {}

    void refresh() { Q_EMIT changed(); }

    QVariantList sounds() const;
    static QVariantList releases();
    bool enabled() const { return !own().empty(); }
    bool mixed() const;
    QString sound() const;
    void setSound(const QString& id);
    double gainDb() const { return shown().gainDb; }
    void setGainDb(double value);
    double pitch() const { return shown().pitch; }
    void setPitch(double value);
    double pan() const;
    void setPan(double value);
    bool ownPan() const { return shown().pan.has_value(); }
    QString release() const;
    void setRelease(const QString& mode);
    QString gainNote() const;
    QString pitchNote() const;
    QString panNote() const;
    QString releaseNote() const;
    bool canReset() const;

    /// Gives the selected keys back to their groups.
    Q_INVOKABLE void reset();
    /// Leaves the pan to what is inherited.
    Q_INVOKABLE void resetPan();

  Q_SIGNALS:
    void changed();

  private:
    bool editsGroups() const;
    std::vector<Assignment> own() const;
    Assignment shown() const;
    Assignment inherited() const;
    QString inheritedSound() const;
    void change(const std::function<void(Assignment&)>& what);

    AppModel& model_;
};

} // namespace vornic
