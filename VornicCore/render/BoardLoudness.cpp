#include "VornicCore/render/BoardLoudness.h"

#include "VornicCore/dsp/DSP.h"
#include "VornicCore/keys/KeySet.h"
#include "VornicCore/keys/KeyboardLayout.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <map>
#include <span>
#include <string>

namespace vornic {

namespace {

constexpr double mostDb = 12.0;

double meanPower(std::span<const Sample> pool) {
    double sum = 0.0;
    for (const Sample& sample : pool) {
        sum += DSP::weightedPower(std::span(sample.data, static_cast<std::size_t>(sample.length)));
    }
    return pool.empty() ? 0.0 : sum / static_cast<double>(pool.size());
}

} // namespace

std::optional<double> boardLoudness(const Board& board, const VoiceBank& bank) {
    std::map<std::string, double> powers; // by pool
    double sum = 0.0;
    double keys = 0.0;
    for (const LayoutKey& key : layout(board.layout).keys) {
        const auto resolved = key.code ? board.resolve(*key.code) : std::nullopt;
        if (!resolved) {
            continue;
        }
        const std::string pool =
            VoiceBank::key(resolved->sound->id, KeySet::isStabilised(*key.code), Velocity::medium);
        const auto [power, isNew] = powers.try_emplace(pool, 0.0);
        if (isNew) {
            power->second = meanPower(bank.pool(pool));
        }
        sum += power->second * std::pow(10.0, resolved->assignment.gainDb / 10.0);
        keys += 1.0;
    }
    const double loudness = keys > 0.0 ? DSP::loudnessOfPower(sum / keys) : 0.0;
    return sum > 0.0 && std::isfinite(loudness) ? std::optional(loudness) : std::nullopt;
}

double matchingGain(std::optional<double> loudness, std::optional<double> wanted) {
    if (!loudness || !wanted) {
        return 1.0;
    }
    return std::pow(10.0, std::clamp(*wanted - *loudness, -mostDb, mostDb) / 20.0);
}

} // namespace vornic
