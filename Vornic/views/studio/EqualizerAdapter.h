#pragma once

#include "Vornic/views/shared/RowsModel.h"
#include "Vornic/views/studio/SoundEdit.h"
#include "Vornic/views/studio/StudioPart.h"

#include <QtQml/qqmlregistration.h>

#include <QList>
#include <QProperty>
#include <QVariantList>

namespace vornic {

/// The five bands of the edited stroke's tone control and the curve that they make. Thread: main.
class EqualizerAdapter : public StudioPart {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The program makes it.")

    /// Rows { value, text, hint, hz, x, gain }: gains in dB, `x` is the band's place along the
    /// curve, 0 to 1.
    Q_PROPERTY(vornic::RowsModel* bands READ bands CONSTANT)
    /// Entries { value, text, summary }.
    Q_PROPERTY(QVariantList presets READ presets CONSTANT)
    /// The preset that the bands stand at by its value, or -1.
    Q_PROPERTY(int preset READ preset NOTIFY presetChanged)
    /// The gain of the stroke's tone control in dB, at equal steps of pitch from 20 Hz to 20 kHz.
    Q_PROPERTY(QList<double> curve READ curve NOTIFY curveChanged)
    /// The same with what parts and character add.
    Q_PROPERTY(QList<double> heardCurve READ heardCurve NOTIFY heardCurveChanged)
    /// Gains that a band can have, in dB either way.
    Q_PROPERTY(double range READ range CONSTANT)

  public:
    /// `model` outlives it.
    explicit EqualizerAdapter(AppModel& model, QObject* parent = nullptr);

    RowsModel* bands() { return &bands_; }
    static QVariantList presets();
    int preset() const { return preset_; }
    QList<double> curve() const { return curve_; }
    QList<double> heardCurve() const { return heardCurve_; }
    static double range();

    /// Sets a band's gain in dB, as near as its range allows.
    Q_INVOKABLE void setBand(int band, double gain);
    Q_INVOKABLE void applyPreset(int preset);
    /// Where a frequency in Hz lies along the curve, 0 to 1.
    static double placeOf(double frequency);

  Q_SIGNALS:
    void presetChanged();
    void curveChanged();
    void heardCurveChanged();

  protected:
    void read() override;

  private:
    AppModel& model_;
    SoundEdit edit_;
    RowsModel bands_;
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(EqualizerAdapter, int, preset_, -1,
                                         &EqualizerAdapter::presetChanged)
    Q_OBJECT_BINDABLE_PROPERTY(EqualizerAdapter, QList<double>, curve_,
                               &EqualizerAdapter::curveChanged)
    Q_OBJECT_BINDABLE_PROPERTY(EqualizerAdapter, QList<double>, heardCurve_,
                               &EqualizerAdapter::heardCurveChanged)
};

} // namespace vornic
