#include "Vornic/views/adapters/EqualizerAdapter.h"

#include "Vornic/views/adapters/QmlText.h"
#include "VornicCore/dsp/EQPreset.h"
#include "VornicCore/dsp/Tone.h"
#include "VornicCore/render/EffectiveStroke.h"

#include <cmath>

namespace vornic {

namespace {

constexpr int points = 161;
constexpr double lowest = 20.0;
constexpr double highest = 20000.0;

QVariantList curveOf(const ChainParams& chain) {
    QVariantList gains;
    for (int point = 0; point < points; ++point) {
        const double place = static_cast<double>(point) / (points - 1);
        const double frequency = lowest * std::pow(highest / lowest, place);
        gains.append(DSP::toneGainDb(chain.eq, chain.highPassHz, chain.lowPassHz, frequency));
    }
    return gains;
}

} // namespace

EqualizerAdapter::EqualizerAdapter(AppModel& model, QObject* parent)
    : QObject(parent), model_(model), edit_(model) {}

void EqualizerAdapter::refresh() {
    QVariantList bands;
    const StrokeSpec* const stroke = edit_.stroke();
    for (const auto band : allCases<Equalizer::Band>()) {
        QVariantMap row = qmlOption(qmlText(rawString(band)), qmlText(label(band)));
        const auto hz = static_cast<double>(frequency(band));
        row["hint"] = qmlText(hint(band));
        row["hz"] = hz;
        row["x"] = placeOf(hz);
        row["gain"] = stroke != nullptr ? static_cast<double>(stroke->chain.eq.gain(band)) : 0.0;
        bands.append(row);
    }
    bands_.show(bands);
    Q_EMIT changed();
}

QVariantList EqualizerAdapter::presets() {
    QVariantList presets;
    for (const EQPreset& preset : EQPreset::all()) {
        QVariantMap option = qmlOption(qmlText(preset.id), qmlText(preset.name));
        option["summary"] = qmlText(preset.summary);
        presets.append(option);
    }
    return presets;
}

QString EqualizerAdapter::preset() const {
    const StrokeSpec* const stroke = edit_.stroke();
    const EQPreset* const preset =
        stroke != nullptr ? EQPreset::matching(stroke->chain.eq) : nullptr;
    return preset != nullptr ? qmlText(preset->id) : QString();
}

QVariantList EqualizerAdapter::curve() const {
    const StrokeSpec* const stroke = edit_.stroke();
    return stroke != nullptr ? curveOf(stroke->chain) : QVariantList();
}

QVariantList EqualizerAdapter::heardCurve() const {
    const StrokeSpec* const stroke = edit_.stroke();
    if (stroke == nullptr) {
        return {};
    }
    const RenderJob job(*edit_.sound(), *model_.board(), false, edit_.isRelease());
    return curveOf(Renderer::effective(*stroke, job).chain);
}

double EqualizerAdapter::range() {
    return static_cast<double>(Equalizer::range.highest);
}

double EqualizerAdapter::placeOf(double frequency) {
    return std::log(frequency / lowest) / std::log(highest / lowest);
}

void EqualizerAdapter::setBand(const QString& band, double gain) {
    if (const auto wanted = caseFromRawString<Equalizer::Band>(band.toStdString())) {
        edit_.changeStroke([&](StrokeSpec& stroke) {
            stroke.chain.eq.setGain(*wanted, static_cast<float>(gain));
        });
    }
}

void EqualizerAdapter::applyPreset(const QString& id) {
    if (const EQPreset* const preset = EQPreset::named(id.toStdString())) {
        edit_.changeStroke([&](StrokeSpec& stroke) { stroke.chain.eq = preset->eq; });
    }
}

} // namespace vornic
