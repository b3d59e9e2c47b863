#pragma once

#include "Vornic/views/adapters/RowsModel.h"
#include "Vornic/views/adapters/SoundEdit.h"

#include <QtQml/qqmlregistration.h>

#include <QObject>
#include <QString>
#include <QVariantList>

namespace vornic {

/// The five bands of the edited stroke's tone control and the curve that they make. Main thread.
class EqualizerAdapter : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The program makes it.")

    /// Rows { value, text, hint, hz, x, gain }: gains in dB, `x` is the band's place along the
    /// curve, 0 to 1.
    Q_PROPERTY(QObject* bands READ bands CONSTANT)
    /// Lists of { value, text, summary }.
    Q_PROPERTY(QVariantList presets READ presets CONSTANT)
    /// The preset that the bands stand at, or nothing.
    Q_PROPERTY(QString preset READ preset NOTIFY changed)
    /// The gain of the stroke's tone control in dB, at equal steps of pitch from 20 Hz to 20 kHz.
    Q_PROPERTY(QVariantList curve READ curve NOTIFY changed)
    /// The same with what parts and character add.
    Q_PROPERTY(QVariantList heardCurve READ heardCurve NOTIFY changed)
    /// Gains that a band can have, in dB either way.
    Q_PROPERTY(double range READ range CONSTANT)

  public:
    /// `model` outlives it.
    explicit EqualizerAdapter(AppModel& model, QObject* parent = nullptr);

    void refresh();

    QObject* bands() { return &bands_; }
    static QVariantList presets();
    QString preset() const;
    QVariantList curve() const;
    QVariantList heardCurve() const;
    static double range();

    /// Sets a band's gain in dB, as near as its range allows.
    Q_INVOKABLE void setBand(const QString& band, double gain);
    Q_INVOKABLE void applyPreset(const QString& id);
    /// Where a frequency in Hz lies along the curve, 0 to 1.
    Q_INVOKABLE static double placeOf(double frequency);

  Q_SIGNALS:
    void changed();

  private:
    AppModel& model_;
    SoundEdit edit_;
    RowsModel bands_;
};

} // namespace vornic
