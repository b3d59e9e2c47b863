#include "packs/calibration/FirstTable.h"

#include "packs/model/Draws.h"

#include <algorithm>
#include <cmath>

namespace vornic::packs {

namespace {

// Modes beside the measured ones, where a third of an octave has none.
void addWeakModes(std::vector<ModeTable>& modes, const Bands& decayMs) {
    constexpr std::size_t enough = 18;
    for (std::size_t band = 4; band < bandCount && modes.size() < enough; ++band) {
        const double hz = bandCentres[band];
        const bool hasOne = std::ranges::any_of(
            modes, [&](const ModeTable& mode) { return std::abs(std::log2(mode.hz / hz)) < 0.3; });
        if (!hasOne) {
            const double off = static_cast<double>(mixed(band, 7) % 1000) / 1000 - 0.5;
            modes.push_back({.hz = hz * std::pow(2.0, off / 4),
                             .part = 0.3,
                             .decayMs = std::min(decayMs[band] * 1.4, 6.0),
                             .cents = 40});
        }
    }
    std::ranges::sort(modes, {}, &ModeTable::hz);
}

} // namespace

double usualSpread(const Statistic& statistic) {
    // Of a normal distribution, 80 % lie within 2.56 deviations.
    return std::min(statistic.deviation, (statistic.ninetieth - statistic.tenth) / 2.2);
}

Bands decaysOf(const ClassFeatures& target) {
    std::array<double, broadCount> broad{};
    double last = 6;
    for (std::size_t band = 0; band < broadCount; ++band) {
        const std::optional<Statistic>& here = target.decayMs[band];
        last = here ? here->median : last;
        broad[band] = last;
    }
    Bands decays{};
    std::ranges::transform(bandCentres, decays.begin(),
                           [&](double hz) { return std::max(broad[broadOf(hz)], 0.8); });
    return decays;
}

StrokeTable firstTable(const ClassFeatures& target, const StrokeTable& before) {
    StrokeTable table = before;
    table.strokes = target.count;
    // One stroke tells little about how hard its key is usually struck.
    const double most = target.count < 5 ? 5 : 30;
    table.levelDb = std::clamp(target.level ? target.level->median : before.levelDb, -most, most);
    table.levels = target.bands;
    table.spreads = target.bandSpread;
    for (Bands& spread : table.spreads) {
        for (double& value : spread) {
            value = std::max(value * 0.7, 0.5);
        }
    }
    table.levelSpread = target.count < 5 || !target.level ? 3 : target.level->deviation;
    table.decayMs = decaysOf(target);
    table.events.clear();
    for (const EventStatistic& event : target.events) {
        const bool isExample = target.count < 5;
        table.events.push_back({.share = event.share,
                                .ms = event.ms.median,
                                .msSpread = event.ms.median <= 0 ? 0
                                            : isExample
                                                ? std::clamp(0.08 * event.ms.median, 0.4, 3.0)
                                                : usualSpread(event.ms),
                                .db = event.db.median,
                                .dbSpread = isExample ? 3 : usualSpread(event.db),
                                .tilt = 0});
    }
    table.modes.clear();
    for (const ModeStatistic& mode : target.modes) {
        if (mode.hz >= target.validFromHz) {
            table.modes.push_back({.hz = mode.hz,
                                   .part = std::clamp(0.3 + 0.4 * mode.present, 0.3, 0.7),
                                   .decayMs = std::max(mode.decayMs.value_or(4), 1.2),
                                   .cents = std::clamp(mode.jitterCents.value_or(40), 20.0, 60.0)});
        }
    }
    addWeakModes(table.modes, table.decayMs);
    return table;
}

} // namespace vornic::packs
