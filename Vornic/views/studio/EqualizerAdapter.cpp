#include "Vornic/views/studio/EqualizerAdapter.h"

#include "Vornic/views/shared/QmlText.h"
#include "VornicCore/dsp/EQPreset.h"
#include "VornicCore/dsp/Tone.h"
#include "VornicCore/render/EffectiveStroke.h"

#include <cmath>
#include <cstddef>

namespace vornic {

namespace {

constexpr int points = 161;
constexpr double lowest = 20.0;
constexpr double highest = 20000.0;

QList<double> curveOf(const ChainParams& chain) {
    const DSP::ToneResponse response(chain.eq, chain.highPassHz, chain.lowPassHz);
    QList<double> gains;
    gains.reserve(points);
    for (int point = 0; point < points; ++point) {
        const double place = static_cast<double>(point) / (points - 1);
        gains.append(response.gainDb(lowest * std::pow(highest / lowest, place)));
    }
    return gains;
}

} // namespace

EqualizerAdapter::EqualizerAdapter(AppModel& model, QObject* parent)
    : StudioPart(parent), model_(model), edit_(model) {}

void EqualizerAdapter::read() {
    QVariantList bands;
    const StrokeSpec* const stroke = edit_.stroke();
    for (const auto band : allCases<Equalizer::Band>()) {
        QVariantMap row = qmlOption(static_cast<int>(band), qmlText(label(band)));
        const auto hz = static_cast<double>(frequency(band));
        row["hint"] = qmlText(hint(band));
        row["hz"] = hz;
        row["x"] = placeOf(hz);
        row["gain"] = stroke != nullptr ? static_cast<double>(stroke->chain.eq.gain(band)) : 0.0;
        bands.append(row);
    }
    bands_.show(bands);
    if (stroke == nullptr) {
        preset_ = -1;
        curve_ = QList<double>();
        heardCurve_ = QList<double>();
        return;
    }
    const EQPreset* const preset = EQPreset::matching(stroke->chain.eq);
    preset_ = preset != nullptr ? static_cast<int>(preset - EQPreset::all().data()) : -1;
    curve_ = curveOf(stroke->chain);
    const RenderJob job(*edit_.sound(), *model_.board(), false, edit_.isRelease());
    heardCurve_ = curveOf(Renderer::effective(*stroke, job).chain);
}

QVariantList EqualizerAdapter::presets() {
    QVariantList presets;
    for (const EQPreset& preset : EQPreset::all()) {
        QVariantMap option = qmlOption(static_cast<int>(presets.size()), qmlText(preset.name));
        option["summary"] = qmlText(preset.summary);
        presets.append(option);
    }
    return presets;
}

double EqualizerAdapter::range() {
    return static_cast<double>(Equalizer::range.highest);
}

double EqualizerAdapter::placeOf(double frequency) {
    return std::log(frequency / lowest) / std::log(highest / lowest);
}

void EqualizerAdapter::setBand(int band, double gain) {
    if (const auto wanted = qmlCase<Equalizer::Band>(band)) {
        edit_.changeStroke([&](StrokeSpec& stroke) {
            stroke.chain.eq.setGain(*wanted, static_cast<float>(gain));
        });
    }
}

void EqualizerAdapter::applyPreset(int preset) {
    const auto& all = EQPreset::all();
    if (preset >= 0 && preset < static_cast<int>(all.size())) {
        edit_.changeStroke([&](StrokeSpec& stroke) {
            stroke.chain.eq = all.at(static_cast<std::size_t>(preset)).eq;
        });
    }
}

} // namespace vornic
