#pragma once

#include "Vornic/model/AppModel.h"

#include <QtQml/qqmlregistration.h>

#include <QObject>
#include <QString>
#include <QVariantList>
#include <cstdint>
#include <functional>
#include <set>

namespace vornic {

/// The Studio's keyboard and what the selected keys play. Main thread.
class StudioKeysAdapter : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The program makes it.")

    /// The keys, as drawnKey makes them.
    Q_PROPERTY(QVariantList keys READ keys NOTIFY changed)
    Q_PROPERTY(double layoutWidth READ layoutWidth NOTIFY changed)
    Q_PROPERTY(double layoutHeight READ layoutHeight NOTIFY changed)
    /// Lists of { value, text }.
    Q_PROPERTY(QVariantList layouts READ layouts CONSTANT)
    Q_PROPERTY(QVariantList groups READ groups CONSTANT)
    Q_PROPERTY(QVariantList sounds READ sounds NOTIFY changed)
    Q_PROPERTY(QVariantList releases READ releases CONSTANT)
    Q_PROPERTY(QString layout READ layout WRITE setLayout NOTIFY changed)
    /// The key that went down last while keys are typed, or -1.
    Q_PROPERTY(int litKey READ litKey NOTIFY changed)

    Q_PROPERTY(QString selection READ selection NOTIFY changed)
    /// The selected group's name in files, or nothing.
    Q_PROPERTY(QString group READ group NOTIFY changed)
    /// What the selection plays; where keys differ, what the first one plays.
    Q_PROPERTY(QString sound READ sound WRITE setSound NOTIFY changed)
    Q_PROPERTY(double gainDb READ gainDb WRITE setGainDb NOTIFY changed)
    Q_PROPERTY(double pitch READ pitch WRITE setPitch NOTIFY changed)
    Q_PROPERTY(double pan READ pan WRITE setPan NOTIFY changed)
    Q_PROPERTY(bool ownPan READ ownPan NOTIFY changed)
    Q_PROPERTY(QString release READ release WRITE setRelease NOTIFY changed)
    Q_PROPERTY(bool canReset READ canReset NOTIFY changed)
    Q_PROPERTY(double rattle READ rattle WRITE setRattle NOTIFY changed)
    Q_PROPERTY(bool releaseByDefault READ releaseByDefault WRITE setReleaseByDefault NOTIFY changed)

  public:
    /// `model` outlives it.
    explicit StudioKeysAdapter(AppModel& model, QObject* parent = nullptr);

    void refresh() { Q_EMIT changed(); }

    QVariantList keys() const;
    double layoutWidth() const;
    double layoutHeight() const;
    static QVariantList layouts();
    static QVariantList groups();
    static QVariantList releases();
    QVariantList sounds() const;
    QString layout() const;
    void setLayout(const QString& id);
    int litKey() const;

    QString selection() const;
    QString group() const;
    QString sound() const;
    void setSound(const QString& id);
    double gainDb() const { return shown().gainDb; }
    void setGainDb(double value);
    double pitch() const { return shown().pitch; }
    void setPitch(double value);
    double pan() const { return shown().pan.value_or(0.0); }
    void setPan(double value);
    bool ownPan() const { return shown().pan.has_value(); }
    QString release() const;
    void setRelease(const QString& mode);
    bool canReset() const;
    double rattle() const;
    void setRattle(double value);
    bool releaseByDefault() const;
    void setReleaseByDefault(bool on);

    /// Selects one key, or adds it to the selected ones, or takes it from them.
    Q_INVOKABLE void selectKey(int code, bool extend);
    /// Selects all keys whose codes are listed.
    Q_INVOKABLE void selectKeys(const QVariantList& codes);
    Q_INVOKABLE void selectGroup(const QString& group);
    Q_INVOKABLE void selectAll();
    /// Gives the selected keys back to their groups.
    Q_INVOKABLE void reset();

  Q_SIGNALS:
    void changed();

  private:
    void select(KeySelection::Any selection);
    std::set<std::int64_t> selectedKeys() const;
    Assignment shown() const;
    void change(const std::function<void(Assignment&)>& what);

    AppModel& model_;
};

} // namespace vornic
