#include "VornicCore/render/StrokeVariation.h"

#include "VornicCore/base/SplitMix64.h"

namespace vornic {

StrokeVariation StrokeVariation::draw(double amount, Velocity velocity, std::int64_t variant,
                                      std::uint64_t seed) {
    constexpr std::uint64_t perVelocity = 81;
    constexpr std::uint64_t perVariant = 40503;
    SplitMix64 generator(seed + perVelocity * static_cast<std::uint64_t>(rawValue(velocity)) +
                         perVariant * static_cast<std::uint64_t>(variant));
    // In this order: the draws must not change places.
    const double r1 = 0.3 * generator.uniform(0, 1) - 0.15;
    const double r2 = 2 * generator.uniform(0, 1) - 1;
    const double r3 = 1.4 * generator.uniform(0, 1) - 0.7;
    const double r4 = 1.4 * generator.uniform(0, 1) - 0.7;
    return {.pitch = 2 * amount * r1,
            .levelDb = 2 * amount * r2,
            .clickDb = 2 * amount * r3,
            .airDb = 2 * amount * r4};
}

void addGain(Equalizer& eq, Equalizer::Band band, double gainDb) {
    eq.setGain(band, eq.gain(band) + static_cast<float>(gainDb));
}

ChainParams struck(ChainParams chain, Velocity velocity, const StrokeVariation& variation) {
    switch (velocity) {
    case Velocity::soft:
        addGain(chain.eq, Equalizer::Band::air, -1.5);
        chain.attackDb -= 3;
        break;
    case Velocity::medium:
        break;
    case Velocity::hard:
        addGain(chain.eq, Equalizer::Band::bass, 1);
        chain.attackDb += 2.5;
        break;
    }
    addGain(chain.eq, Equalizer::Band::click, variation.clickDb);
    addGain(chain.eq, Equalizer::Band::air, variation.airDb);
    return chain;
}

double finalLevelDb(Velocity velocity, const StrokeVariation& variation) {
    switch (velocity) {
    case Velocity::soft:
        return variation.levelDb - 3;
    case Velocity::medium:
        return variation.levelDb;
    case Velocity::hard:
        return variation.levelDb + 2;
    }
    return variation.levelDb;
}

} // namespace vornic
