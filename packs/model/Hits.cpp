#include "packs/model/Hits.h"

#include <algorithm>
#include <cstdint>

namespace vornic::packs {

namespace {

// Numbers of what is drawn once a stroke; those of a list leave room behind them.
enum Variable : std::uint64_t {
    eventCount = 1,
    level = 2,
    pace = 3,
    eventTime = 100,
    eventLevel = 200,
    bands = 300,
    windowBands = 1000,
};

std::size_t windowOf(double ms) {
    return ms < windowEdgesMs[1] ? 0 : ms < windowEdgesMs[2] ? 1 : 2;
}

} // namespace

std::vector<Hit> drawHits(const StrokeTable& table, const Draws& draws) {
    const double count = draws.even(eventCount);
    const double common = draws.normal(pace);
    std::vector<Hit> hits;
    for (std::size_t i = 0; i < table.events.size(); ++i) {
        const EventTable& event = table.events[i];
        if (count >= event.share) {
            continue;
        }
        // A finger that is slow to reach the bottom is slow to reach all that comes before it too.
        const double late = std::clamp(0.7 * common + 0.7 * draws.normal(eventTime + i), -1.6, 1.6);
        const double earliest = hits.empty() ? 0 : hits.back().ms + 2.8;
        hits.push_back({.ms = std::max(event.ms + event.msSpread * late, earliest),
                        .gainDb = event.db + event.dbSpread * draws.normal(eventLevel + i),
                        .tilt = event.tilt,
                        .window = windowOf(event.ms)});
    }
    return hits;
}

std::array<double, windowCount> windowPowers(const StrokeTable& table) {
    std::array<double, windowCount> powers{};
    for (const EventTable& event : table.events) {
        powers[windowOf(event.ms)] += event.share * power(event.db);
    }
    return powers;
}

double hitShare(const StrokeTable& table, std::size_t window) {
    return window == 1 ? 1 - table.bodyShare : window == 2 ? 1 - table.tailShare : 1;
}

void setShares(const StrokeTable& table, const std::array<double, windowCount>& powers,
               std::vector<Hit>& hits) {
    std::array<double, windowCount> energies{};
    double usual = 0;
    for (std::size_t window = 0; window < windowCount; ++window) {
        for (const double db : table.levels[window]) {
            energies[window] += power(db) * hitShare(table, window);
        }
        usual += powers[window] > 0 ? energies[window] : 0;
    }
    double sum = 0;
    for (Hit& hit : hits) {
        hit.share = energies[hit.window] * power(hit.gainDb) / powers[hit.window];
        sum += hit.share;
    }
    for (Hit& hit : hits) {
        hit.share /= sum;
        hit.gainDb += 10 * std::log10(usual / sum);
    }
}

std::array<Bands, windowCount> drawLevels(const StrokeTable& table, const Draws& draws,
                                          const KeyPlace& place) {
    std::array<Bands, windowCount> levels = table.levels;
    for (std::size_t window = 0; window < windowCount; ++window) {
        for (std::size_t band = 0; band < bandCount; ++band) {
            const double octaves = std::log2(bandCentres[band] / 2000);
            // What a key has more of in a band, it has from the contact to the end.
            const double drawn = 0.75 * draws.normal(bands + band) +
                                 0.66 * draws.normal(windowBands + 100 * window + band);
            // Keys of the rows far from the typist and at the sides stand stiffer.
            const double stiffer = 0.35 * place.y + 0.25 * std::abs(place.x) - 0.1;
            levels[window][band] += stiffer * octaves + table.spreads[window][band] * drawn;
        }
    }
    return levels;
}

double drawLevelDb(const StrokeTable& table, const Draws& draws) {
    return table.levelDb + table.levelSpread * draws.normal(level);
}

} // namespace vornic::packs
